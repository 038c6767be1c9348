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

RecordedExchange ReadExchange(const nlohmann::json& object, std::size_t line) {
  RecordedExchange exchange;
  exchange.method = Text(object, "method", line);
  exchange.resource = Text(object, "resource", line);
  exchange.request = Text(object, "request", line);
  exchange.answer = Text(object, "answer", line);
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
    recording.exchanges.push_back(ReadExchange(object, line));
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
