// How a page of a change list goes over the wire. The array sends "changeList" as a JSON
// string whose content is the text of an array, and writes file names with HTML-like
// entities for & < > ( ) and the apostrophe. Pages are written by hand, straight in their
// escaped form into one buffer, because a benchmark walks a million entries and this is on
// its path.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "filetree/TreeDifference.h"

namespace arraysim {

// Appends, as one JSON string literal (quotes included), the text of the array of entries
// [begin, end), e.g. "[{\"inode\":12,\"changeType\":1,...}]". Names carry the entities
// "a&b(1)'s" -> "a&amp;b&#40;1&#41;&#39;s"; other bytes, UTF-8 included, stay as they are.
void AppendChangeListString(std::string& out, const TreeDifference& difference, std::size_t begin, std::size_t end);

// Appends `text` as a JSON string literal, quotes included. Bytes from 0x80 up stay raw.
void AppendJsonString(std::string& out, std::string_view text);

}  // namespace arraysim
