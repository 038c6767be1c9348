// Every request class of the system, with their two bases.
#pragma once

#include "HuaweiJSONBase.h"
#include "HuaweiJSONBaseV2.h"
#include "HuaweiJSONChangeListRequests.h"
#include "HuaweiJSONDeleteRequest.h"
#include "HuaweiJSONGetTokenInfo.h"
#include "HuaweiOpTypes.h"
#include "HuaweiRequestTypes.h"
