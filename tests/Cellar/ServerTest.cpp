// What opening a server's database is refused with, and never says.

#include "CellarTestSupport.h"

using Server = TwoConnections;
ON_SERVER(Server);

TEST_P(Server, SaysWhyItCannotBeOpenedAndNeverThePassword)
{
    const std::string whole = ::Test::ConnectionTextOf("practice.db").Str();
    const auto with = [&](const char* from, const char* to) { return ::Test::ReplacedAll(whole, from, to); };
    ::Test::WriteFile("password", "s3cret}%41\r\nand more");
    const std::string right = ::Test::WriteFile("right", "test\n");
    for (const auto& [from, to, says, why] :
         ::Test::Table<const char*, std::string, const char*>("Cellar/Server.tsv")) {
        SCOPED_TRACE(why);
        const std::string text = with(from, ::Test::ReplacedAll(to, "FOLDER", ::Test::TempDir()).c_str());
        const DatabaseError error = ErrorOf([&text] { CConnection::Open(text.c_str()); });
        EXPECT_EQ(error.GetCategory(), Category::CannotOpen);
        EXPECT_NE(error.GetReason().find(says), std::string::npos) << error.what();
        EXPECT_EQ(error.GetReason().find("s3cret"), std::string::npos) << error.what();
        EXPECT_EQ(error.GetReason().find('\n'), std::string::npos) << error.what();
    }
    const auto opened = CConnection::Open(with("PWD=test", ("PasswordFile=" + right + ";KeyFile=/k").c_str()).c_str());
    EXPECT_EQ(opened->GetConnectionText().Str(), with("PWD=test", ("PasswordFile=" + right + ";KeyFile=/k").c_str()));
    EXPECT_EQ(connection->GetConnectionText().Str(), with("PWD=test;", ""));
    EXPECT_EQ(ErrorOf([&] { connection->CopyTo(::Test::TempDir() + "/copy"); }).GetCategory(), Category::Other);
}

TEST(ServerText, TellsAttributesApart)
{
    const ServerText text("ODBC: driver = PostgreSQL Unicode ;pwd={a;b}}c};UID=u;KeyFile={/k;y};Pwd=second;;Flag;x=");
    EXPECT_EQ(text.Get("Driver"), "PostgreSQL Unicode");
    EXPECT_EQ(text.GetPassword(), "a;b}c");
    EXPECT_EQ(text.GetKeyFile(), "/k;y");
    EXPECT_EQ(text.GetShown(), "odbc:driver=PostgreSQL Unicode;UID=u;KeyFile={/k;y};x=");
    EXPECT_EQ(text.GetForDriver("Own=1;"), "driver=PostgreSQL Unicode;UID=u;x=;Own=1;PWD={a;b}}c};");
    EXPECT_FALSE(ServerText::Is("odb"));
}
