#include "shell/parts/character_filter.h"

#include <gtest/gtest.h>

#include <QTest>

namespace kestrel::shell {
namespace {

class CharacterFilters : public testing::Test {
 protected:
  /// A field with `text` put there by the program.
  QLineEdit& Field(NumberCharacters takes, const char* text = "") {
    field = std::make_unique<QLineEdit>();
    new CharacterFilter(std::move(takes), *field);
    field->setText(QString::fromLatin1(text));
    return *field;
  }
  QString Typed(const char* text) {
    QTest::keyClicks(field.get(), QString::fromLatin1(text));
    return field->text();
  }
  /// As pasting does: all at once.
  QString Inserted(const char* text) {
    field->insert(QString::fromLatin1(text));
    return field->text();
  }

  std::unique_ptr<QLineEdit> field;
};

TEST_F(CharacterFilters, OnlyItsCharactersAreTaken) {
  Field(Digits());
  EXPECT_EQ(Typed("1-a2,.3"), QStringLiteral("123"));
  Field(DigitsAndPoint());
  EXPECT_EQ(Typed("1-a2,.3+"), QStringLiteral("12,.3"));
}

TEST_F(CharacterFilters, WhatTheProgramPutThereStandsAndDoesNotCount) {
  for (const char* stands : {"-12.50", "N36", "1e5", "-"}) {
    const QString before = QString::fromLatin1(stands);
    Field(DigitsAndPoint(), stands);
    EXPECT_EQ(field->text(), before);
    EXPECT_EQ(Typed("x"), before);
    EXPECT_EQ(Typed("y7z"), before + u'7');
    EXPECT_EQ(Typed("-"), before + u'7');
    // Put there again, as a click on the map does.
    field->setText(before);
    EXPECT_EQ(Typed("a8b"), before + u'8');
    field->setCursorPosition(1);
    EXPECT_EQ(Typed("c"), before + u'8');
  }
}

TEST_F(CharacterFilters, WhatStandsCanBeDeletedAndBroughtBack) {
  QLineEdit& line = Field(DigitsAndPoint(), "-5.00");
  line.selectAll();
  EXPECT_EQ(Inserted("x"), QStringLiteral("-5.00"));
  line.selectAll();
  EXPECT_EQ(Typed("7"), QStringLiteral("7"));
  line.undo();
  EXPECT_EQ(line.text(), QStringLiteral("-5.00"));
  EXPECT_EQ(Typed("q"), QStringLiteral("-5.00"));
  line.selectAll();
  line.del();
  line.undo();
  EXPECT_EQ(line.text(), QStringLiteral("-5.00"));
  line.redo();
  EXPECT_EQ(line.text(), QString());
  EXPECT_EQ(Typed("q1r"), QStringLiteral("1"));
}

TEST_F(CharacterFilters, PastedTextIsTakenWholeOrNotAtAll) {
  Field(SignedNumber());
  EXPECT_EQ(Inserted("36,5N"), QString());
  EXPECT_EQ(Inserted("-36,5"), QStringLiteral("-36,5"));
  field->selectAll();
  EXPECT_EQ(Inserted("-1-"), QStringLiteral("-36,5"));
}

TEST_F(CharacterFilters, OneSignStandsInFront) {
  Field(SignedNumber());
  EXPECT_EQ(Typed("-+-5-"), QStringLiteral("-5"));
  field->setCursorPosition(0);
  EXPECT_EQ(Typed("+3"), QStringLiteral("-5"));
  field->setCursorPosition(1);
  EXPECT_EQ(Typed("-3"), QStringLiteral("-35"));
  field->setText(QStringLiteral("5"));
  field->setCursorPosition(0);
  EXPECT_EQ(Typed("-"), QStringLiteral("-5"));
}

TEST_F(CharacterFilters, CommaBecomesAPointWhereThatIsWanted) {
  NumberCharacters takes = DigitsAndPoint();
  takes.CommaIsPoint = true;
  Field(takes, "-5.00");
  EXPECT_EQ(Typed("x,1y"), QStringLiteral("-5.00.1"));
  EXPECT_EQ(Typed("z,"), QStringLiteral("-5.00.1."));
  field->selectAll();
  EXPECT_EQ(Inserted("1,5"), QStringLiteral("1.5"));
  EXPECT_EQ(Typed("e"), QStringLiteral("1.5"));
}

}  // namespace
}  // namespace kestrel::shell
