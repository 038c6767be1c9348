#include "filetree/HostileNames.h"

namespace arraysim {
namespace {

// Every control character, and DEL.
std::string ControlCharacters() {
  std::string name = "ctl-";
  for (char c = 1; c < 0x20; ++c) name += c;
  return name + "\x7f-end";
}

// Nested names of 250 bytes until the path is 4,095 bytes long, the most a path may be.
std::string LongPath() {
  const std::string kSegment = "long \"\\\t&amp;\xc3\xa9-";
  std::string path = "deep";
  while (path.size() < 4095) {
    std::string name;
    while (name.size() < 250) name += kSegment;
    name.resize(250);
    path += '/';
    path += name.substr(0, 4095 - path.size());
  }
  return path;
}

}  // namespace

std::vector<std::string> HostilePaths() {
  return {
      "tenantA/.\\./tenantB/payroll.xlsx",
      "tenantA/..\\/x",
      "say \"hi\".txt",
      "\"",
      "back\\slash",
      "\\",
      "\\\\server\\share",
      "ends with backslash\\",
      "tab\tx",
      "line\nbreak\r\n",
      ControlCharacters(),
      "it's",
      "R&D <draft> (v2).txt",
      "&amp;&lt;&#39;&#0;&#x41; &",
      "a&b&",
      "\\u0041\\ud83d\\ude00 \\n \\\" \\/",
      "]\" \"[ ]\"",
      "{\"inode\":1}",
      " lead and trail ",
      "caf\xc3\xa9/na\xc3\xafve.txt",
      "\xe6\x97\xa5\xe6\x9c\xac/\xe3\x83\x95.txt",
      "smile \xf0\x9f\x98\x80",
      "latin1 \xe9\xff",
      LongPath(),
  };
}

}  // namespace arraysim
