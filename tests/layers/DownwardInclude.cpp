// A transport file may read the records below it.
#include "HuaweiApiValues.h"
#include "HuaweiRestAPI.h"

int zrLayerProbeDown() { return 0; }
