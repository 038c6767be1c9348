// The records and typed values of the system.
#pragma once

#include "HuaweiApiValues.h"
#include "HuaweiArrayIdentityRecords.h"
#include "HuaweiCloneRecords.h"
#include "HuaweiFileSystemRecords.h"
#include "HuaweiFileSystemSnapshotRecords.h"
#include "HuaweiHostRecords.h"
#include "HuaweiLUNRecords.h"
#include "HuaweiLunGroupRecords.h"
#include "HuaweiMappingViewRecords.h"
#include "HuaweiShareRecords.h"
