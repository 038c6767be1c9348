// Every request class of the system, with their two bases.
#pragma once

#include "HuaweiJSONBase.h"
#include "HuaweiJSONBaseV2.h"
#include "HuaweiJSONDeleteRequest.h"
#include "HuaweiJSONGetTokenInfo.h"
#include "HuaweiOpTypes.h"
#include "HuaweiRequestTypes.h"
#include "HuaweiJSONArrayIdentityRequests.h"
#include "HuaweiJSONChangeListRequests.h"
#include "HuaweiJSONFileSystemRequests.h"
#include "HuaweiJSONFileSystemSnapshotRequests.h"
