#pragma once

#include <fstream>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

/// Frames as people write them down, in golden files and in documents.
namespace tarnix::tests {

inline std::vector<std::string> linesOfFile(const std::string& path) {
  std::ifstream file(path);
  std::vector<std::string> lines;
  for (std::string line; std::getline(file, line);) {
    lines.push_back(line);
  }
  return lines;
}

/// Bytes written as hexadecimal pairs with white space between them.
inline std::string bytesOfHex(std::string_view text) {
  std::istringstream stream{std::string(text)};
  std::string bytes;
  for (std::string pair; stream >> pair;) {
    bytes.push_back(static_cast<char>(std::stoi(pair, nullptr, 16)));
  }
  return bytes;
}

/// Lines that are one, broken and indented for the eye.
inline std::string joined(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) {
    const std::size_t start = line.find_first_not_of(' ');
    text += start == std::string::npos ? "" : line.substr(start);
  }
  return text;
}

}  // namespace tarnix::tests
