#include "Names.h"

namespace Morv::Sample
{

namespace
{

constexpr std::array kFirstNames{
    "Abigail", "Adeola", "Agnes",  "Alastair", "Amara",    "Anwen",   "Arthur",   "Bronwen", "Callum",  "Catrin",
    "Chidi",   "Clara",  "Conor",  "Daphne",   "Dilys",    "Dominic", "Edith",    "Eilidh",  "Emeka",   "Esme",
    "Euan",    "Farah",  "Fergus", "Fiona",    "Gareth",   "Gwen",    "Hamish",   "Hester",  "Idris",   "Imran",
    "Iona",    "Isolde", "Ivor",   "Jasmine",  "Joss",     "Kwame",   "Leena",    "Lorcan",  "Mabel",   "Malik",
    "Marcus",  "Meera",  "Mhairi", "Nadia",    "Nesta",    "Niamh",   "Olive",    "Osian",   "Parveen", "Percival",
    "Quentin", "Rashid", "Rhian",  "Rohan",    "Rosalind", "Rupert",  "Sanjay",   "Seán",    "Siân",    "Silas",
    "Sunita",  "Tamsin", "Tariq",  "Ursula",   "Verity",   "Wilfred", "Winifred", "Yasmin",  "Yusuf",   "Zoë"};

constexpr std::array kSurnames{
    "Aldercott",    "Amberley",      "Ashdown",     "Balfrey",    "Banerjee",    "Barrowclough", "Bellweather",
    "Blackthorn",   "Bramhall",      "Brackenbury", "Calloway",   "Carrick",     "Chaudhry",     "Coldstream",
    "Copperfield",  "Cranleigh",     "Dalgarno",    "Dewhurst",   "Duxbury",     "Eccleshall",   "Fairweather",
    "Fenwick",      "Garside",       "Glendower",   "Goodacre",   "Gulliford",   "Hartnell",     "Hawthorne",
    "Heddle",       "Hollins",       "Ibekwe",      "Inchbald",   "Jellicoe",    "Kaur",         "Kellaway",
    "Kinnaird",     "Lamplugh",      "Lanyon",      "Lockhart",   "Lonsdale",    "MacAskill",    "Maddern",
    "Merriweather", "Mistry",        "Mortlake",    "Nettleship", "Nwosu",       "O'Garra",      "Oakeshott",
    "Pengelly",     "Pettigrew",     "Prydderch",   "Quayle",     "Rahimi",      "Ravenscroft",  "Redfearn",
    "Rosewarne",    "Satterthwaite", "Selkirk",     "Sevenoaks",  "Shackleford", "Stannard",     "Tamblyn",
    "Thistlewood",  "Trevanion",     "Tulloch",     "Uddin",      "Vaisey",      "Wetherby",     "Whitcombe",
    "Wintersgill",  "Yardley"};

constexpr std::array kTrustWords{"Settlement", "Family Trust", "Will Trust", "Discretionary Trust", "Children's Trust"};
constexpr std::array kTrades{"Architects", "Builders", "Caterers",  "Engineers",
                             "Farms",      "Joinery",  "Surveyors", "Veterinary Practice"};
constexpr std::array kBanks{"Northmoor Building Society", "Harbour & County Bank", "Saltmarsh Savings",
                            "Penrose Private Bank", "Five Rivers Building Society"};
constexpr std::array<Employer, 8> kEmployers{{{"Larkhill Haulage Ltd", "120/LH4521"},
                                              {"Meridian Optics plc", "267/MO8830"},
                                              {"Stonebridge Academy Trust", "581/SA1107"},
                                              {"Greywater Brewing Co Ltd", "073/GB2094"},
                                              {"Castle & Moat Hotels Ltd", "846/CM6615"},
                                              {"Tidewell NHS Trust", "951/TW3348"},
                                              {"Hedgerow Foods Ltd", "419/HF7702"},
                                              {"Quillfeather Press Ltd", "635/QP5180"}}};
constexpr std::array kNumberLetters{"AB", "CE", "HJ", "JK", "LM", "NR", "PS", "SY", "TW", "WA", "YB"};

} // namespace

std::uint64_t Dice::Next() noexcept
{
    std::uint64_t mixed = m_state += 0x9E3779B97F4A7C15U;
    mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9U;
    mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBU;
    return mixed ^ (mixed >> 31);
}

int Dice::Below(int limit) noexcept { return static_cast<int>(Next() % static_cast<std::uint64_t>(limit)); }
int Dice::Between(int least, int most) noexcept { return least + Below(most - least + 1); }

Kiln::CAmt Dice::Pounds(int least, int most) noexcept
{
    return Kiln::CAmt::FromPence(std::int64_t{Between(least, most)} * 100 + Below(100));
}

std::string FirstName(Dice& dice) { return dice.Pick(kFirstNames); }
std::string Surname(Dice& dice) { return dice.Pick(kSurnames); }

std::string TrustName(Dice& dice) { return "The " + Surname(dice) + " " + dice.Pick(kTrustWords); }

std::string PartnershipName(Dice& dice, bool isLLP)
{
    const std::string name = Surname(dice);
    return isLLP ? name + " " + dice.Pick(kTrades) + " LLP" : name + " & " + Surname(dice);
}

const Employer& EmployerOf(Dice& dice) { return dice.Pick(kEmployers); }
const char* BankName(Dice& dice) { return dice.Pick(kBanks); }

CString MakeUTR(std::int64_t serial)
{
    constexpr int kWeights[] = {6, 7, 8, 9, 10, 5, 4, 3, 2};
    constexpr char kCheck[] = "21987654321";
    CString digits;
    digits.Format("%09d", static_cast<int>(serial % 1'000'000'000));
    int sum = 0;
    for (int i = 0; i < 9; ++i)
        sum += (digits[i] - '0') * kWeights[i];
    return CString(kCheck[sum % 11] + digits.Str());
}

CString MakeNINumber(int serial)
{
    const char* const letters =
        serial <= 12 ? "AA" : kNumberLetters[static_cast<std::size_t>(serial) % kNumberLetters.size()];
    CString text;
    text.Format("%s%06d%c", letters, serial % 1'000'000, static_cast<char>('A' + serial % 4));
    return text;
}

CString MakeGUID(long client, int employment)
{
    Dice dice(static_cast<std::uint64_t>(client) * 64 + static_cast<std::uint64_t>(employment));
    CString text;
    text.Format("{%08X-%04X-4%03X-A%03X-%06X%06X}", static_cast<int>(client), dice.Below(0x10000), dice.Below(0x1000),
                dice.Below(0x1000), dice.Below(0x1000000), dice.Below(0x1000000));
    return text;
}

} // namespace Morv::Sample
