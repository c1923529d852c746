#include "link/phonebook.h"

#include <gtest/gtest.h>

#include <string>

namespace kestrel::link {
namespace {

base::Table<ConnEntry> Entries(std::initializer_list<ConnEntry> entries) {
  base::Table<ConnEntry> list;
  for (const ConnEntry& entry : entries) list.Append(entry);
  return list;
}

TEST(Phonebook, EntryIsTrimmed) {
  const ConnEntry entry = TrimmedEntry("  Red  Flag ", " relay.example  ");
  EXPECT_EQ(entry.Name, "Red  Flag");
  EXPECT_EQ(entry.Ip, "relay.example");
}

TEST(Phonebook, EntryIsOneLine) {
  const ConnEntry entry = TrimmedEntry("Red\r\n[MAPS]\tFlag\n", std::string_view("10.0.0.1\0", 9));
  EXPECT_EQ(entry.Name, "Red  [MAPS] Flag");
  EXPECT_EQ(entry.Ip, "10.0.0.1");
}

TEST(Phonebook, LettersOfTheCodePageStay) {
  EXPECT_EQ(TrimmedEntry("\xC4\xFF", "h\xF6me").Name, "\xC4\xFF");
  EXPECT_EQ(TrimmedEntry("\xC4\xFF", "h\xF6me").Ip, "h\xF6me");
}

TEST(Phonebook, AddressIsNeededAndHasNoBlanks) {
  EXPECT_EQ(Objection(TrimmedEntry("Home", " \t ")), "Please enter the address or the name of a server.");
  for (const char* address : {"10.0. 0.1", "relay example", "10.0.0.1\r\n10.0.0.2"}) {
    EXPECT_EQ(Objection(TrimmedEntry("Home", address)), "An address has no blanks in it.") << address;
  }
  EXPECT_EQ(Objection(TrimmedEntry("", " 10.0.0.1 ")), std::nullopt);
  EXPECT_EQ(Objection(TrimmedEntry("Home", "fe80::1%eth0")), std::nullopt);
}

TEST(Phonebook, ScanFindsNameAndAddressLetterByLetter) {
  const auto list = Entries({{"Home", "10.0.0.1"}, {"Away", "10.0.0.2"}, {"", "10.0.0.3"}});
  struct Case {
    ConnEntry Entry;
    std::size_t Name;
    std::size_t Ip;
  };
  const Case cases[] = {
      {{"Home", "10.0.0.1"}, 1, 1}, {{"Home", "10.0.0.2"}, 1, 2}, {{"Home", "10.0.0.9"}, 1, 0},
      {{"New", "10.0.0.2"}, 0, 2},  {{"New", "10.0.0.9"}, 0, 0},  {{"home", "10.0.0.9"}, 0, 0},
      {{"", "10.0.0.9"}, 3, 0},
  };
  for (const Case& each : cases) {
    const EntryMatch match = ValidateEntry(each.Entry, list);
    EXPECT_EQ(match.Name, each.Name) << each.Entry.Name << ' ' << each.Entry.Ip;
    EXPECT_EQ(match.Ip, each.Ip) << each.Entry.Name << ' ' << each.Entry.Ip;
  }
}

TEST(Phonebook, LastOfEqualEntriesIsFound) {
  const auto list = Entries({{"Home", "a"}, {"Home", "b"}, {"Away", "a"}});
  const EntryMatch match = ValidateEntry({"Home", "a"}, list);
  EXPECT_EQ(match.Name, 2u);
  EXPECT_EQ(match.Ip, 3u);
}

TEST(Phonebook, EmptyPhonebookHoldsNothing) {
  const EntryMatch match = ValidateEntry({"", ""}, base::Table<ConnEntry>());
  EXPECT_EQ(match.Name, 0u) << "the dummy is no entry";
  EXPECT_EQ(match.Ip, 0u);
}

TEST(ConnPort, NumbersOf16BitsAreTaken) {
  EXPECT_EQ(PortFromText("1"), 1);
  EXPECT_EQ(PortFromText(" 5556 "), 5556);
  EXPECT_EQ(PortFromText("0080"), 80);
  EXPECT_EQ(PortFromText("65535"), 65535);
}

TEST(ConnPort, EverythingElseIsRefused) {
  for (const char* text : {"", " ", "0", "65536", "-1", "+80", "80.5", "8e2", "0x50", "55 56", "port", "99999999999999",
                           "123456789012345678901234567890"}) {
    EXPECT_EQ(PortFromText(text), std::nullopt) << text;
  }
  EXPECT_EQ(PortFromText(std::string(1000, '9')), std::nullopt);
}

TEST(AddressWithPort, IsTakenApart) {
  const struct {
    const char* Typed;
    const char* Host;
    std::int32_t Port;
  } cases[] = {{"10.0.0.1:5557", "10.0.0.1", 5557},
               {"host.example:1", "host.example", 1},
               {"[::1]:65535", "::1", 65535},
               {"a:080", "a", 80}};
  for (const auto& each : cases) {
    const std::optional<HostAndPort> apart = SplitPort(each.Typed);
    ASSERT_TRUE(apart) << each.Typed;
    EXPECT_EQ(apart->Host, each.Host);
    EXPECT_EQ(apart->Port, each.Port);
  }
}

TEST(AddressWithPort, EverythingElseIsAnAddress) {
  for (const char* text : {"", ":", ":5557", "host", "host:", "host:0", "host:65536", "host:http", "::1",
                           "fe80::1:5557", "[::1]", "[]:5557", "a:b:5557", "host:55 57"}) {
    EXPECT_FALSE(SplitPort(text)) << text;
  }
}

}  // namespace
}  // namespace kestrel::link
