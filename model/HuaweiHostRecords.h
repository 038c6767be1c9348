// Initiators and hosts.
#pragma once

#include <string>
