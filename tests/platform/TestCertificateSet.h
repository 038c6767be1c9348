// Certificates made once per test run in a private temporary directory, removed at the end.
#pragma once

#include <string>

#include "LocalCertificates.h"

namespace platformtest {

// A scratch directory of this test run.
const std::string& ScratchDirectory();

// CA and server certificate for 127.0.0.1.
const arraysim::CertificateFiles& LocalCertificates();
// An unrelated CA and server certificate for 127.0.0.1: its pin does not match LocalCertificates.
const arraysim::CertificateFiles& OtherCertificates();
// Signed by its own CA for another address (10.11.12.13), so the host name check must refuse it.
const arraysim::CertificateFiles& ForeignAddressCertificates();

}  // namespace platformtest
