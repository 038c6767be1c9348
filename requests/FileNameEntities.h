// The entities with which the array writes some characters of file names, decoded exactly (the
// change list's exact mode): &amp; &lt; &gt; &quot; &apos;, and &#N; or &#xH; for any character,
// as UTF-8. The array writes every ampersand of a name as &amp;, so an ampersand that opens none
// of these belongs to the name and stays.
#pragma once

#include <string>

namespace HuaweiFileNameEntities {

// Decodes `name` in place; answers nullptr, or why it cannot be decoded (a character reference
// to no character); the name is then of no use.
const char* decode(std::string& name);

}  // namespace HuaweiFileNameEntities
