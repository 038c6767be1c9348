// Certificates for local HTTPS servers: a throw-away certificate authority and a server
// certificate it signs, made at run time so that nothing secret lives in the source tree.
#pragma once

#include <string>

namespace arraysim {

struct CertificateFiles {
  std::string directory;
  std::string caCertPath;
  std::string serverCertPath;
  std::string serverKeyPath;
};

// Makes a fresh CA (EC P-256) and a server certificate it signs for ipAddress (subjectAltName
// IP:<ip> and DNS:localhost, valid from 1 hour ago for 30 days), written as PEM files into
// directory (created if missing). Throws std::runtime_error on failure.
CertificateFiles MakeCertificates(const std::string& directory, const std::string& ipAddress);

// The sha256//<base64> public-key pin of the server key, for libcurl pinning.
std::string PublicKeyPin(const std::string& serverCertPath);

}  // namespace arraysim
