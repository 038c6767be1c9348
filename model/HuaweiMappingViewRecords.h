// Mapping views.
#pragma once

#include <string>
