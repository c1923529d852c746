#include "shell/parts/typed_text.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QLineEdit>

namespace kestrel::shell {
namespace {

class TypedText : public testing::Test {
 protected:
  std::optional<std::string> Take(const QString& text) {
    field.setText(text);
    return TakeText(field, refused);
  }

  QLineEdit field;
  QLabel refused;
};

TEST_F(TypedText, HeldTextIsTakenAndTheSentenceGoes) {
  EXPECT_EQ(Take(QStringLiteral("\uD55C")), std::nullopt);
  EXPECT_FALSE(refused.isHidden());
  EXPECT_EQ(Take(QStringLiteral("caf\u00E9 1.5")), "caf\xE9 1.5");
  EXPECT_TRUE(refused.isHidden());
  EXPECT_EQ(refused.text(), QString());
  EXPECT_EQ(Take(QString()), "");
}

TEST_F(TypedText, QuestionMarkIsHeld) {
  EXPECT_EQ(Take(QStringLiteral("what?")), "what?");
  EXPECT_EQ(UnheldCharacters(QStringLiteral("?\uFFFD?")), QStringList(QStringLiteral("\uFFFD")));
}

TEST_F(TypedText, EachCharacterIsNamedOnceInItsOrder) {
  EXPECT_EQ(Take(QStringLiteral("\u65E5a\u672C \u65E5")), std::nullopt);
  EXPECT_EQ(refused.text(), QStringLiteral("These characters cannot be used here: \u65E5, \u672C."));
  EXPECT_EQ(field.text(), QStringLiteral("\u65E5a\u672C \u65E5"));
}

TEST_F(TypedText, CharacterOfTwoUnitsIsOne) {
  EXPECT_EQ(UnheldCharacters(QStringLiteral("a\U0001F600b")), QStringList(QStringLiteral("\U0001F600")));
}

TEST_F(TypedText, CharacterThatCannotBeSeenIsNamedByItsNumber) {
  EXPECT_EQ(UnheldCharacters(QStringLiteral("a\u200Bb\u202E\u0301\U000E0001\u2003")),
            (QStringList{QStringLiteral("U+200B"), QStringLiteral("U+202E"), QStringLiteral("U+0301"),
                         QStringLiteral("U+E0001"), QStringLiteral("U+2003")}));
}

TEST_F(TypedText, SentenceHasRoomForEight) {
  EXPECT_EQ(Take(QStringLiteral("\u0410\u0411\u0412\u0413\u0414\u0415\u0416\u0417\u0418\u0419")), std::nullopt);
  EXPECT_EQ(refused.text(), QStringLiteral("These characters cannot be used here: \u0410, \u0411, \u0412, \u0413, "
                                           "\u0414, \u0415, \u0416, \u0417 and 2 more."));
}

}  // namespace
}  // namespace kestrel::shell
