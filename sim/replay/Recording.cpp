#include "replay/Recording.h"

#include <fstream>
#include <nlohmann/json.hpp>
#include <stdexcept>

namespace arraysim {
namespace {

constexpr int kFormat = 1;

[[noreturn]] void Refuse(std::size_t line, const std::string& why) {
  throw std::runtime_error("recording line " + std::to_string(line) + ": " + why);
}

std::string Text(const nlohmann::json& object, const char* key, std::size_t line) {
  const auto it = object.find(key);
  if (it == object.end() || !it->is_string()) Refuse(line, std::string("\"") + key + "\" is missing or no text");
  return it->get<std::string>();
}

// An answer written as it came ends the line, after its length: its bytes are cut out of the
// line, so that it is served exactly as the array sent it.
std::string RawAnswer(const nlohmann::json& object, const std::string& text, std::size_t line) {
  static const std::string kOpening = ",\"answer\":";
  const auto bytes = object.find("answerBytes");
  if (!bytes->is_number_unsigned()) Refuse(line, "\"answerBytes\" is no length");
  const std::size_t length = bytes->get<std::size_t>();
  const std::size_t close = text.find_last_not_of(" \t\r");
  if (close == std::string::npos || text[close] != '}' || length > close || close - length < kOpening.size() ||
      text.compare(close - length - kOpening.size(), kOpening.size(), kOpening) != 0) {
    Refuse(line, "the answer of \"answerBytes\" does not end the line");
  }
  return text.substr(close - length, length);
}

RecordedExchange ReadExchange(const nlohmann::json& object, const std::string& text, std::size_t line) {
  RecordedExchange exchange;
  exchange.method = Text(object, "method", line);
  exchange.resource = Text(object, "resource", line);
  exchange.request = Text(object, "request", line);
  exchange.answer =
      object.contains("answerBytes") ? RawAnswer(object, text, line) : Text(object, "answer", line);
  const auto status = object.find("status");
  if (status == object.end() || !status->is_number_integer() || status->get<long long>() < 100 ||
      status->get<long long>() > 599) {
    Refuse(line, "\"status\" is no HTTP status");
  }
  exchange.status = status->get<int>();
  exchange.line = line;
  return exchange;
}

}  // namespace

Recording ParseRecording(std::istream& lines) {
  Recording recording;
  std::string text;
  std::size_t line = 0;
  bool headerRead = false;
  while (std::getline(lines, text)) {
    ++line;
    if (text.empty()) continue;
    const auto object = nlohmann::json::parse(text, nullptr, false);
    if (object.is_discarded() || !object.is_object()) Refuse(line, "not a JSON object");
    if (!headerRead) {
      const auto format = object.find("recording");
      if (format == object.end() || !format->is_number_integer() || format->get<long long>() != kFormat) {
        Refuse(line, "not a recording header of format 1");
      }
      const auto library = object.find("library");
      const auto anonymised = object.find("anonymised");
      if (library != object.end() && library->is_string()) recording.library = library->get<std::string>();
      recording.anonymised = anonymised != object.end() && anonymised->is_boolean() && anonymised->get<bool>();
      headerRead = true;
      continue;
    }
    recording.exchanges.push_back(ReadExchange(object, text, line));
  }
  if (!headerRead) throw std::runtime_error("recording is empty");
  return recording;
}

Recording LoadRecording(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error("cannot open recording " + path);
  return ParseRecording(file);
}

}  // namespace arraysim
