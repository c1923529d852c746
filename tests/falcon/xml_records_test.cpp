#include "falcon/xml_records.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "failure_text.h"
#include "falcon/xml_writer.h"

namespace kestrel::falcon {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

/// What is taken, a line for each event.
class Takes : public XmlTaker {
 public:
  void Begin(std::int32_t number) override { Lines.push_back("#" + std::to_string(number)); }
  void Take(std::size_t field, const XmlText& text) override {
    Lines.push_back(std::to_string(field) + "=" + text.Text());
  }
  std::vector<std::string> Lines;
};

constexpr std::string_view Names[] = {"Type", "Name", "Idx_"};

std::vector<std::string> Read(const std::string& bytes) {
  Takes takes;
  ReadXmlRecords({"T.XML", bytes}, {.Record = "T", .Number = "Num", .Fields = Names}, takes);
  return takes.Lines;
}
std::string Refusal(const std::string& bytes) {
  return test::FailureOf([&] { Read(bytes); });
}
/// A document of one record, 7, with these fields.
std::string One(const std::string& fields) { return "<R><T Num=\"7\">" + fields + "</T></R>"; }

TEST(XmlRecords, FieldsAreTakenInTheOrderOfTheFile) {
  const std::string text = test::XmlTable("R", "T", {"<Type>1</Type><Other>x</Other><Name> a b </Name>", "<Name/>"}, 4);
  EXPECT_THAT(Read(text), ElementsAre("#4", "0=1", "1=a b", "#5", "1="));
}

TEST(XmlRecords, NameThatEndsInALineStandsForAllWithANumber) {
  EXPECT_THAT(Read(One("<Idx_0>5</Idx_0><Idx_12>6</Idx_12><Idx_>1</Idx_><Idx_x>1</Idx_x><Idx_0>7</Idx_0>")),
              ElementsAre("#7", "2=5", "2=6", "2=7"));
}

TEST(XmlRecords, OnlyWhatStandsInARecordIsTaken) {
  EXPECT_THAT(Read("<R><Type>1</Type><X Num=\"1\"><Type>2</Type></X><T Num=\"3\"><Deep><Type>4</Type></Deep>"
                   "<T Num=\"5\"><Type>6</Type></T></T></R>"),
              ElementsAre("#3"));
  EXPECT_THAT(Read("<T Num=\"1\"><Type>1</Type></T>"), IsEmpty()) << "records stand below a root";
  EXPECT_THAT(Read(One("<Name>a<b>x</b>c<!-- d --><![CDATA[<e>]]>&amp;&#65;</Name>")), ElementsAre("#7", "1=ac<e>&A"));
}

TEST(XmlRecords, AnyEncodingIsTurnedIntoTheCodePage) {
  const std::string utf8 = "<R><T Num=\"7\"><Name>Z\xC3\xBCrich \xE2\x82\xAC</Name></T></R>";
  const std::string bytes = "<R><T Num=\"7\"><Name>Z\xFCrich \x80</Name></T></R>";
  const auto declared = [](const std::string& encoding) {
    return "<?xml version=\"1.0\" encoding=\"" + encoding + "\"?>";
  };
  const auto expected = ElementsAre("#7", "1=Z\xFCrich \x80");
  EXPECT_THAT(Read(utf8), expected);
  EXPECT_THAT(Read("\xEF\xBB\xBF" + declared("utf-8") + utf8), expected);
  EXPECT_THAT(Read(declared("windows-1252") + bytes), expected);
  EXPECT_THAT(Read(declared("iso-8859-1") + bytes), expected);
  EXPECT_THAT(Read(declared("utf-8") + bytes), expected) << "what is no UTF-8 is none, whatever it tells";
  EXPECT_THAT(Read("\xEF\xBB\xBF" + bytes), expected);
  EXPECT_THAT(Read(declared("nothing-known") + bytes), expected);
  std::string wide = "\xFF\xFE";
  for (const char letter : declared("utf-16") + One("<Name>ab</Name>")) wide += std::string(1, letter) + '\0';
  EXPECT_THAT(Read(wide), ElementsAre("#7", "1=ab"));
}

TEST(XmlRecords, OneThatIsCutAnywhereIsRefused) {
  const std::string text = test::XmlHead() + One("<Type>1</Type><Name>a&amp;b</Name>");
  for (std::size_t length = 0; length < text.size(); ++length) {
    EXPECT_THAT(Refusal(text.substr(0, length)), StartsWith("T.XML: ")) << length;
  }
  EXPECT_THAT(Refusal("<R>\n<T Num=\"7\"><Type>1</Type>"), StartsWith("T.XML: record 7, line 2, "));
  EXPECT_NE(Refusal(text + "<more/>"), "");
  EXPECT_NE(Refusal("no XML at all"), "");
}

TEST(XmlRecords, EntitiesOfItsOwnAreRefused) {
  std::string bomb = "<!DOCTYPE R [<!ENTITY a \"aaaaaaaaaa\">";
  for (char name = 'b'; name < 'k'; ++name) {
    bomb += "<!ENTITY " + std::string(1, name) + " \"";
    for (int n = 0; n < 10; ++n) bomb += "&" + std::string(1, static_cast<char>(name - 1)) + ";";
    bomb += "\">";
  }
  EXPECT_EQ(Refusal(bomb + "]>" + One("<Name>&j;</Name>")), "T.XML: it has a document type");
  EXPECT_EQ(Refusal("<!DOCTYPE R SYSTEM \"file:///etc/passwd\">" + One("")), "T.XML: it has a document type");
  EXPECT_THAT(Refusal(One("<Name>&mine;</Name>")), HasSubstr("undefined entity"));
}

TEST(XmlRecords, DepthIsBounded) {
  const auto deep = [](int levels) {
    std::string open, close;
    for (int n = 0; n < levels; ++n) {
      open += "<d>";
      close += "</d>";
    }
    return One(open + close);
  };
  EXPECT_THAT(Read(deep(MaxXmlDepth - 2)), ElementsAre("#7"));
  EXPECT_EQ(Refusal(deep(MaxXmlDepth - 1)), "T.XML: record 7, its elements lie too deep within each other");
  EXPECT_EQ(Refusal(deep(100000)), "T.XML: record 7, its elements lie too deep within each other");
}

TEST(XmlRecords, TextIsBounded) {
  const auto with = [](const std::string& name, std::size_t letters) {
    return One("<" + name + ">" + std::string(letters, 'x') + "</" + name + ">");
  };
  EXPECT_EQ(Read(with("Name", MaxXmlText))[1].size(), 2 + MaxXmlText);
  for (const char* const name : {"Name", "Other"}) {
    EXPECT_EQ(Refusal(with(name, MaxXmlText + 1)), "T.XML: record 7, an element has more than 65536 bytes of text");
    EXPECT_EQ(Refusal(with(name, 10u << 20u)), "T.XML: record 7, an element has more than 65536 bytes of text");
  }
  EXPECT_THAT(Refusal("<R>" + std::string(10u << 20u, ' ') + "</R>"), HasSubstr("more than 65536 bytes"));
  EXPECT_EQ(Refusal(std::string(MaxXmlBytes + 1, ' ')), "T.XML: it has 67108865 bytes");
}

TEST(XmlRecords, RecordsNeedANumber) {
  EXPECT_EQ(Refusal("<R><T Num=\"0\"/><T/></R>"), "T.XML: record 2 from the top has no number");
  EXPECT_EQ(Refusal("<R><T No=\"0\"/></R>"), "T.XML: record 1 from the top has no number");
  EXPECT_EQ(Refusal("<R><T Num=\"five\"/></R>"), "T.XML: record 1 from the top, Num: \"five\" is no number");
  EXPECT_EQ(Refusal("<R><T Num=\"-1\"/></R>"), "T.XML: record 1 from the top has the number -1");
  EXPECT_EQ(Refusal("<R><T Num=\"262144\"/></R>"), "T.XML: record 1 from the top has the number 262144");
  EXPECT_THAT(Refusal("<R><T Num=\"1e18\"/></R>"), HasSubstr("does not fit"));
  EXPECT_THAT(Read("<R><T A=\"3\" Num=\"262143\"/></R>"), ElementsAre("#262143"));
}

TEST(XmlRecords, FieldThatIsToldTwiceIsRefused) {
  EXPECT_EQ(Refusal(One("<Type>1</Type><Name/><Type>1</Type>")), "T.XML: record 7, it tells Type twice");
}

TEST(XmlRecords, NumbersAreNearest) {
  EXPECT_EQ(XmlText("\n 12 ").Whole<std::int16_t>(), 12);
  EXPECT_EQ(XmlText("12.000").Whole<std::uint8_t>(), 12);
  EXPECT_EQ(XmlText("-3").Whole<std::int32_t>(), -3);
  EXPECT_EQ(XmlText("-0.000").Number(), 0);
  EXPECT_EQ(XmlText("  ").Number(), 0);
  EXPECT_EQ(XmlText("25,448").Number(), 25.448);
  EXPECT_EQ(XmlText("1e300").Number(), 1e300);
  EXPECT_EQ(XmlText("33285").Bits(), 33285);
  EXPECT_EQ(XmlText("-1").Bits(), 65535);
  for (const char* const none : {"nan", "-nan(ind)", "INF", "+Infinity", "-1.#IND"}) {
    EXPECT_TRUE(std::isnan(XmlText(none).Number())) << none;
    EXPECT_THAT(test::FailureOf([&] { XmlText(none).Whole<std::int32_t>(); }), HasSubstr("does not fit"));
  }
}

TEST(XmlRecords, NumbersThatLieAreRefused) {
  const auto refused = [](const char* text) { return test::FailureOf([&] { XmlText(text).Whole<std::uint8_t>(); }); };
  EXPECT_EQ(refused("256"), "\"256\" does not fit");
  EXPECT_EQ(refused("-1"), "\"-1\" does not fit");
  EXPECT_EQ(refused("twelve"), "\"twelve\" is no number");
  EXPECT_EQ(refused("12 13"), "\"12 13\" is no number");
  EXPECT_EQ(refused("0x10"), "\"0x10\" is no number");
  EXPECT_EQ(refused("1e999"), "\"1e999\" is no number");
  EXPECT_LT(refused(std::string(5000, 'x').c_str()).size(), 100U) << "only its beginning is told";
}

}  // namespace
}  // namespace kestrel::falcon
