#include "MorvUt/hmrc/detail/StagingKeys.h"

#include <map>

namespace HmrcApi
{
namespace
{

std::string Numbered(const std::string& text, int number) { return text + " #" + std::to_string(number); }

std::string LongKey(const PayeIdentity& item) { return item.reference + ' ' + item.worksNumber; }

/// The key of the `nth` item (from 1) of one reference and works number.
std::string NthKey(const PayeIdentity& item, int nth)
{
    if (item.worksNumber.empty())
        return Numbered(item.reference, nth + 1); // a reference without a number behind it stands for one item alone
    return nth == 1 ? LongKey(item) : Numbered(LongKey(item), nth);
}

} // namespace

std::vector<std::string> StagingKeys(const std::vector<PayeIdentity>& items)
{
    std::map<std::string, int> sharing;
    for (const PayeIdentity& item : items)
        ++sharing[item.reference];
    std::set<std::string> taken;
    std::vector<std::string> keys;
    for (const PayeIdentity& item : items) {
        std::string key = sharing[item.reference] == 1 ? item.reference : NthKey(item, 1);
        for (int nth = 2; !taken.insert(key).second; ++nth)
            key = NthKey(item, nth);
        keys.push_back(std::move(key));
    }
    return keys;
}

std::string SpareKey(const PayeIdentity& item, const std::set<std::string>& taken)
{
    int nth = 1;
    while (taken.count(NthKey(item, nth)) != 0)
        ++nth;
    return NthKey(item, nth);
}

std::vector<std::string> ScheduleKeys(const std::vector<PayeIdentity>& schedules, const std::set<std::string>& keys)
{
    std::map<std::string, int> seen; // schedules so far by the key of the first of their kind
    std::vector<std::string> found;
    for (const PayeIdentity& schedule : schedules) {
        const std::string own = NthKey(schedule, ++seen[NthKey(schedule, 1)]);
        if (keys.count(own) != 0)
            found.push_back(own);
        else if (keys.count(schedule.reference) != 0)
            found.push_back(schedule.reference);
        else
            found.push_back(LongKey(schedule));
    }
    return found;
}

} // namespace HmrcApi
