// Storage pools and clones.
#pragma once

#include <string>
