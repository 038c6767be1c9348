// A model file may not reach the transport above it.
#include "HuaweiApiValues.h"
#include "HuaweiRestAPI.h"

int zrLayerProbeUp() { return 0; }
