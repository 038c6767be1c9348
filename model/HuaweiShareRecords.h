// NAS shares and their permissions.
#pragma once

#include <string>
