#include "link/line_protocol.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kestrel::link {
namespace {

using namespace std::string_literals;

std::vector<std::pair<std::string, std::string>> Cut(const std::string& bytes) {
  std::vector<CommandEntry> Commands;
  ParseData(bytes, Commands);
  std::vector<std::pair<std::string, std::string>> cut;
  for (const CommandEntry& entry : Commands) cut.emplace_back(entry.Command, entry.Data);
  return cut;
}

TEST(ParseData, CutsAtTheTerminators) {
  using Messages = std::vector<std::pair<std::string, std::string>>;
  const std::vector<std::pair<std::string, Messages>> cases = {
      {"", {}},
      {"SYNCRO\0"s, {{"SYNCRO", ""}}},
      {"DELCLT5\0SYNCRO\0"s, {{"DELCLT", "5"}, {"SYNCRO", ""}}},
      {"\0\0"s, {{"", ""}, {"", ""}}},
      {"ABC\0"s, {{"ABC", ""}}},
      {"NEWCLT1\x1e\x1e\x1e\0"s, {{"NEWCLT", "1\x1e\x1e\x1e"}}},
  };
  for (const auto& [bytes, messages] : cases) EXPECT_EQ(Cut(bytes), messages) << testing::PrintToString(bytes);
}

TEST(InDataBuffer, KeepsTheUnterminatedTail) {
  InDataBuffer buffer;
  std::string whole = "old";
  EXPECT_TRUE(buffer.Append("SYN"));
  EXPECT_FALSE(buffer.TakeWhole(whole));
  EXPECT_TRUE(buffer.Append("CRO\0DEL"s));
  ASSERT_TRUE(buffer.TakeWhole(whole));
  EXPECT_EQ(whole, "SYNCRO\0"s);
  EXPECT_FALSE(buffer.TakeWhole(whole));
  EXPECT_TRUE(buffer.Append("CLT1\0"s));
  ASSERT_TRUE(buffer.TakeWhole(whole));
  EXPECT_EQ(whole, "DELCLT1\0"s);
  EXPECT_EQ(buffer.Size(), 0u);
}

TEST(InDataBuffer, LongestMessageIsTaken) {
  InDataBuffer buffer;
  EXPECT_TRUE(buffer.Append(std::string(MaxMessageBytes, 'x')));
  EXPECT_TRUE(buffer.Append("\0"s));
  std::string whole;
  ASSERT_TRUE(buffer.TakeWhole(whole));
  EXPECT_EQ(whole.size(), MaxMessageBytes + 1);
}

TEST(InDataBuffer, NeverHoldsMoreThanTheLongestMessage) {
  InDataBuffer buffer;
  int cutOff = 0;
  for (int mebibyte = 0; mebibyte < 100; ++mebibyte) {
    if (!buffer.Append(std::string(1 << 20, 'x'))) ++cutOff;
    ASSERT_LE(buffer.Size(), MaxMessageBytes);
  }
  EXPECT_EQ(cutOff, 20);
}

TEST(InDataBuffer, LongerTailIsDroppedAndWholeMessagesStay) {
  InDataBuffer buffer;
  EXPECT_TRUE(buffer.Append("SYNCRO\0"s));
  EXPECT_FALSE(buffer.Append(std::string(MaxMessageBytes + 1, 'x')));
  std::string whole;
  ASSERT_TRUE(buffer.TakeWhole(whole));
  EXPECT_EQ(whole, "SYNCRO\0"s);
  EXPECT_EQ(buffer.Size(), 0u);
}

}  // namespace
}  // namespace kestrel::link
