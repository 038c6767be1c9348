#pragma once

// The HTTP method of a request; carried as an int through the transport.
enum REQ_TYPE_HUAWEI {
  HUAWEI_REQ_GET = 0,
  HUAWEI_REQ_POST = 1,
  HUAWEI_REQ_PUT = 2,
  HUAWEI_REQ_DELETE = 3,
};
