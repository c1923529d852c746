#pragma once

#include <gtest/gtest.h>

#include <QByteArray>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>
#include <cstdio>
#include <filesystem>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "base/temp_folder.h"
#include "falcon-info/options.h"
#include "falcon-info/report.h"
#include "project_paths.h"

// Runs falcon-info and reads what it prints by a reader of JSON that is not ours.
namespace kestrel::test {

/// A printed report, of which parts are told by their way: "objectives/0/name".
class Report {
 public:
  explicit Report(const std::string& printed) : text(printed) {
    QJsonParseError wrong;
    const QByteArray bytes = QByteArray::fromStdString(printed);
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &wrong);
    EXPECT_EQ(wrong.error, QJsonParseError::NoError) << wrong.errorString().toStdString() << "\n" << printed;
    EXPECT_TRUE(QString::fromUtf8(bytes).toUtf8() == bytes) << "no UTF-8";
    whole = document.isArray() ? QJsonValue(document.array()) : QJsonValue(document.object());
  }

  QJsonValue At(std::string_view way) const {
    QJsonValue value = whole;
    while (!way.empty()) {
      const std::string step(way.substr(0, way.find('/')));
      way.remove_prefix(std::min(step.size() + 1, way.size()));
      value =
          value.isArray() ? value.toArray().at(std::stoi(step)) : value.toObject().value(QString::fromStdString(step));
    }
    return value;
  }
  /// A number; one that is not there fails.
  double Number(std::string_view way) const {
    EXPECT_TRUE(At(way).isDouble()) << way << " is no number in\n" << text;
    return At(way).toDouble();
  }
  /// A text, in UTF-8; one that is not there fails.
  std::string Text(std::string_view way) const {
    EXPECT_TRUE(At(way).isString()) << way << " is no text in\n" << text;
    return At(way).toString().toStdString();
  }
  bool IsTrue(std::string_view way) const {
    EXPECT_TRUE(At(way).isBool()) << way << " is neither true nor false in\n" << text;
    return At(way).toBool();
  }
  bool IsNull(std::string_view way) const { return At(way).isNull(); }
  bool Has(std::string_view way) const { return !At(way).isUndefined(); }
  std::size_t Size(std::string_view way) const {
    EXPECT_TRUE(At(way).isArray()) << way << " is no list in\n" << text;
    return static_cast<std::size_t>(At(way).toArray().size());
  }
  std::vector<double> Numbers(std::string_view way) const {
    std::vector<double> numbers;
    for (const auto& number : At(way).toArray()) numbers.push_back(number.toDouble());
    EXPECT_TRUE(At(way).isArray()) << way;
    return numbers;
  }
  const std::string& Printed() const { return text; }
  const QJsonValue& Whole() const { return whole; }

 private:
  std::string text;
  QJsonValue whole;
};

/// The names of all members of `value` and of what is in it.
inline void GatherNames(const QJsonValue& value, std::set<std::string>& names) {
  for (const auto& element : value.toArray()) GatherNames(element, names);
  const QJsonObject members = value.toObject();
  for (auto member = members.begin(); member != members.end(); ++member) {
    names.insert(member.key().toStdString());
    GatherNames(member.value(), names);
  }
}
/// That --help has each of them as a word of its own.
inline void ExpectFieldsNamed(const QJsonValue& value) {
  static const std::string help = falconinfo::HelpText();
  static std::set<std::string> named;
  std::set<std::string> names;
  GatherNames(value, names);
  for (const std::string& name : names) {
    if (named.count(name) > 0) continue;
    const bool isNamed = std::regex_search(help, std::regex("\\b" + name + "\\b"));
    EXPECT_TRUE(isNamed) << "--help does not name " << name;
    if (isNamed) named.insert(name);
  }
}

/// What the built program prints and ends with.
struct Ran {
  int Exit = -1;
  std::string Out;
};
inline Ran RunFalconInfo(const std::string& words) {
  Ran ran;
  std::FILE* const pipe = popen((KESTREL_BINARY_DIR "/tools/falcon-info " + words + " 2>/dev/null").c_str(), "r");
  char piece[4096];
  for (std::size_t bytes = 0; (bytes = std::fread(piece, 1, sizeof piece, pipe)) > 0;) ran.Out.append(piece, bytes);
  const int status = pclose(pipe);
  ran.Exit = (status & 0x7F) == 0 ? status / 256 : -1;
  return ran;
}

/// A folder with files, and what the program's own procedures report on them.
class FalconInfo : public testing::Test {
 protected:
  std::filesystem::path Write(const std::string& name, std::string_view bytes) {
    const std::filesystem::path file = folder.Path() / name;
    std::filesystem::create_directories(file.parent_path());
    WriteBytes(file, bytes);
    return file;
  }
  /// The report on a file or folder.
  Report Tell(const std::string& name) {
    options.Paths = {folder.Path() / name};
    falconinfo::Context context{options};
    std::ostringstream out;
    falconinfo::PrintReports(context, out);
    failures = context.Failures;
    Report report(out.str());
    ExpectFieldsNamed(report.Whole());
    return report;
  }

  TempFolder folder;
  falconinfo::Options options;
  std::size_t failures = 0;
};

}  // namespace kestrel::test
