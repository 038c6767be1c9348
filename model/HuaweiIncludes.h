// The records and typed values of the system.
#pragma once

#include "HuaweiApiValues.h"
#include "HuaweiArrayIdentityRecords.h"
#include "HuaweiFileSystemRecords.h"
#include "HuaweiSnapshotRecords.h"
