#include "jsonxx.h"
