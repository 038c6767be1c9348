// Ports on 127.0.0.1 for client tests.
#pragma once

namespace platformtest {

// A port where nothing listens (bound a moment ago and released).
int ClosedPort();

}  // namespace platformtest
