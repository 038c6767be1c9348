// A recording of a client's session with an array, as the platform client writes it: JSON lines,
// a header first, then one exchange a line, in the order they were made.
//
//   {"recording":1,"library":"1.0.0","anonymised":false}
//   {"method":"GET","resource":"/deviceManager/rest/{deviceid}/filesystem","request":"","status":200,
//    "ms":1.234,"answerBytes":33,"answer":{"data":[...],"error":{"code":0}}}
//   {"method":"GET","resource":"/deviceManager/rest/{deviceid}/system/","request":"","status":502,
//    "ms":0.7,"answer":"Bad gateway"}
//
// An answer that is one JSON value stands as it came, after its length in bytes; any other is a
// string (as every answer is in the recordings of earlier versions, before "ms").
//
// The device identifier is written as {deviceid} and every token as {iBaseToken}, wherever they
// stood; the login's password is masked.
#pragma once

#include <istream>
#include <string>
#include <vector>

namespace arraysim {

struct RecordedExchange {
  std::string method;
  std::string resource;  // path and query, as sent
  std::string request;   // body, empty when none
  int status = 200;
  std::string answer;
  std::size_t line = 0;  // in the file, for messages
};

struct Recording {
  std::string library;
  bool anonymised = false;
  std::vector<RecordedExchange> exchanges;
};

constexpr const char* kDeviceIdPlaceholder = "{deviceid}";
constexpr const char* kTokenPlaceholder = "{iBaseToken}";

// Throws std::runtime_error naming the line when the text is not a recording of format 1.
Recording ParseRecording(std::istream& lines);
Recording LoadRecording(const std::string& path);

}  // namespace arraysim
