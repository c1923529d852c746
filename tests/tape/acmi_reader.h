#pragma once

#include <locale>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

// A second reader of ACMI 2.2: what stands in the air at each time, found with nothing of the writer.
namespace kestrel::test {

struct AcmiThing {
  double Long = 0, Lat = 0, Metres = 0;
  std::map<std::string, std::string> Properties;  ///< without T
};

struct AcmiFrame {
  double Seconds = 0;
  std::map<std::string, AcmiThing> Things;  ///< by Id, all that are there
};

struct Acmi {
  std::map<std::string, std::string> Global;
  std::vector<AcmiFrame> Frames;
};

/// The parts of a line between commas that are not marked, with what is marked as itself.
inline std::vector<std::string> AcmiParts(std::string_view line) {
  std::vector<std::string> parts(1);
  for (std::size_t n = 0; n < line.size(); ++n) {
    if (line[n] == '\\' && n + 1 < line.size()) {
      parts.back() += line[++n];
    } else if (line[n] == ',') {
      parts.emplace_back();
    } else {
      parts.back() += line[n];
    }
  }
  return parts;
}

inline void SetAcmiPlace(const std::string& text, AcmiThing& thing) {
  double* const into[] = {&thing.Long, &thing.Lat, &thing.Metres};
  std::istringstream numbers(text);
  numbers.imbue(std::locale::classic());
  std::string number;
  for (double* const each : into) {
    if (!std::getline(numbers, number, '|')) throw std::runtime_error("a place without three numbers: " + text);
    std::istringstream one(number);
    one.imbue(std::locale::classic());
    if (!(one >> *each) || !one.eof()) throw std::runtime_error("no number: " + number);
  }
}

inline Acmi ReadAcmi(const std::string& bytes) {
  std::istringstream text(bytes);
  Acmi acmi;
  std::string line;
  for (const char* const head : {"\xEF\xBB\xBF"
                                 "FileType=text/acmi/tacview",
                                 "FileVersion=2.2"}) {
    if (!std::getline(text, line) || line != head) throw std::runtime_error("no ACMI: " + line);
  }
  std::map<std::string, AcmiThing> now;
  const auto close = [&] {
    if (!acmi.Frames.empty()) acmi.Frames.back().Things = now;
  };
  while (std::getline(text, line)) {
    if (line.empty()) throw std::runtime_error("an empty line");
    if (line[0] == '#') {
      close();
      acmi.Frames.push_back({std::stod(line.substr(1)), {}});
      continue;
    }
    if (line[0] == '-') {
      if (now.erase(line.substr(1)) != 1) throw std::runtime_error("what is not there is removed: " + line);
      continue;
    }
    const std::vector<std::string> parts = AcmiParts(line);
    for (std::size_t n = 1; n < parts.size(); ++n) {
      const std::size_t sign = parts[n].find('=');
      if (sign == std::string::npos) throw std::runtime_error("no property: " + parts[n]);
      const std::string name = parts[n].substr(0, sign), value = parts[n].substr(sign + 1);
      if (parts[0] == "0") {
        acmi.Global[name] = value;
      } else if (name == "T") {
        SetAcmiPlace(value, now[parts[0]]);
      } else {
        now.at(parts[0]).Properties[name] = value;
      }
    }
  }
  close();
  return acmi;
}

}  // namespace kestrel::test
