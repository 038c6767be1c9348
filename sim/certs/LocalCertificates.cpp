#include "LocalCertificates.h"

#include <sys/stat.h>

#include <cstdio>
#include <filesystem>
#include <memory>
#include <stdexcept>

#include <openssl/bn.h>
#include <openssl/err.h>
#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/rand.h>
#include <openssl/sha.h>
#include <openssl/x509.h>
#include <openssl/x509v3.h>

namespace arraysim {
namespace {

struct PkeyFree { void operator()(EVP_PKEY* p) const { EVP_PKEY_free(p); } };
struct X509Free { void operator()(X509* p) const { X509_free(p); } };
struct ExtFree { void operator()(X509_EXTENSION* p) const { X509_EXTENSION_free(p); } };
struct BnFree { void operator()(BIGNUM* p) const { BN_free(p); } };
struct FileClose { void operator()(FILE* p) const { std::fclose(p); } };

using KeyPtr = std::unique_ptr<EVP_PKEY, PkeyFree>;
using CertPtr = std::unique_ptr<X509, X509Free>;
using FilePtr = std::unique_ptr<FILE, FileClose>;

constexpr long kOneHour = 60L * 60L;
constexpr long kThirtyDays = 30L * 24L * kOneHour;

[[noreturn]] void Fail(const std::string& what) {
  char reason[256] = "no detail";
  unsigned long code = ERR_get_error();
  if (code != 0) ERR_error_string_n(code, reason, sizeof reason);
  ERR_clear_error();
  throw std::runtime_error("certificate maker: " + what + " (" + reason + ")");
}

KeyPtr MakeKey() {
  KeyPtr key(EVP_EC_gen("P-256"));
  if (!key) Fail("cannot make an EC P-256 key");
  return key;
}

void SetRandomSerial(X509* cert) {
  std::unique_ptr<BIGNUM, BnFree> serial(BN_new());
  // 63 bits keeps the serial positive and distinct between runs.
  if (!serial || !BN_rand(serial.get(), 63, BN_RAND_TOP_ANY, BN_RAND_BOTTOM_ANY) ||
      !BN_to_ASN1_INTEGER(serial.get(), X509_get_serialNumber(cert))) {
    Fail("cannot set a serial number");
  }
}

void SetCommonName(X509_NAME* name, const std::string& commonName) {
  const auto* text = reinterpret_cast<const unsigned char*>(commonName.c_str());
  if (!X509_NAME_add_entry_by_txt(name, "O", MBSTRING_ASC,
                                  reinterpret_cast<const unsigned char*>("Array simulator"), -1, -1, 0) ||
      !X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_ASC, text, -1, -1, 0)) {
    Fail("cannot set the name " + commonName);
  }
}

// issuer == nullptr makes a self-signed certificate: cert is its own issuer.
void AddExtension(X509* cert, X509* issuer, int nid, const std::string& value) {
  X509V3_CTX context;
  X509V3_set_ctx_nodb(&context);
  X509V3_set_ctx(&context, issuer ? issuer : cert, cert, nullptr, nullptr, 0);
  std::unique_ptr<X509_EXTENSION, ExtFree> extension(
      X509V3_EXT_conf_nid(nullptr, &context, nid, value.c_str()));
  if (!extension || !X509_add_ext(cert, extension.get(), -1)) Fail("cannot add extension " + value);
}

CertPtr NewCertificate(EVP_PKEY* subjectKey, const std::string& commonName) {
  CertPtr cert(X509_new());
  if (!cert || !X509_set_version(cert.get(), 2)) Fail("cannot make a certificate");
  SetRandomSerial(cert.get());
  // Valid from an hour ago so that small clock differences do not make it "not yet valid".
  if (!X509_gmtime_adj(X509_getm_notBefore(cert.get()), -kOneHour) ||
      !X509_gmtime_adj(X509_getm_notAfter(cert.get()), kThirtyDays) ||
      !X509_set_pubkey(cert.get(), subjectKey)) {
    Fail("cannot set validity or key");
  }
  SetCommonName(X509_get_subject_name(cert.get()), commonName);
  return cert;
}

void Sign(X509* cert, EVP_PKEY* issuerKey) {
  if (X509_sign(cert, issuerKey, EVP_sha256()) == 0) Fail("cannot sign the certificate");
}

CertPtr MakeAuthority(EVP_PKEY* caKey) {
  CertPtr ca = NewCertificate(caKey, "Array simulator test CA");
  if (!X509_set_issuer_name(ca.get(), X509_get_subject_name(ca.get()))) Fail("cannot set the CA issuer");
  AddExtension(ca.get(), nullptr, NID_basic_constraints, "critical,CA:TRUE,pathlen:0");
  AddExtension(ca.get(), nullptr, NID_key_usage, "critical,keyCertSign,cRLSign");
  AddExtension(ca.get(), nullptr, NID_subject_key_identifier, "hash");
  Sign(ca.get(), caKey);
  return ca;
}

CertPtr MakeServer(EVP_PKEY* serverKey, X509* ca, EVP_PKEY* caKey, const std::string& ipAddress) {
  CertPtr server = NewCertificate(serverKey, ipAddress);
  if (!X509_set_issuer_name(server.get(), X509_get_subject_name(ca))) Fail("cannot set the server issuer");
  AddExtension(server.get(), ca, NID_basic_constraints, "critical,CA:FALSE");
  AddExtension(server.get(), ca, NID_key_usage, "critical,digitalSignature");
  AddExtension(server.get(), ca, NID_ext_key_usage, "serverAuth");
  AddExtension(server.get(), ca, NID_subject_key_identifier, "hash");
  AddExtension(server.get(), ca, NID_authority_key_identifier, "keyid:always");
  AddExtension(server.get(), ca, NID_subject_alt_name, "IP:" + ipAddress + ",DNS:localhost");
  Sign(server.get(), caKey);
  return server;
}

FilePtr OpenForWriting(const std::string& path, mode_t mode) {
  std::remove(path.c_str());
  FilePtr file(std::fopen(path.c_str(), "wx"));
  if (!file) throw std::runtime_error("certificate maker: cannot write " + path);
  ::chmod(path.c_str(), mode);
  return file;
}

void WriteCertificate(const std::string& path, X509* cert) {
  FilePtr file = OpenForWriting(path, 0644);
  if (!PEM_write_X509(file.get(), cert)) Fail("cannot write " + path);
}

void WritePrivateKey(const std::string& path, EVP_PKEY* key) {
  FilePtr file = OpenForWriting(path, 0600);
  if (!PEM_write_PrivateKey(file.get(), key, nullptr, nullptr, 0, nullptr, nullptr)) Fail("cannot write " + path);
}

}  // namespace

CertificateFiles MakeCertificates(const std::string& directory, const std::string& ipAddress) {
  std::error_code error;
  std::filesystem::create_directories(directory, error);
  if (error) throw std::runtime_error("certificate maker: cannot create " + directory + ": " + error.message());

  KeyPtr caKey = MakeKey();
  KeyPtr serverKey = MakeKey();
  CertPtr ca = MakeAuthority(caKey.get());
  CertPtr server = MakeServer(serverKey.get(), ca.get(), caKey.get(), ipAddress);

  const std::filesystem::path base(directory);
  CertificateFiles files;
  files.directory = directory;
  files.caCertPath = (base / "ca.pem").string();
  files.serverCertPath = (base / "server.pem").string();
  files.serverKeyPath = (base / "server-key.pem").string();
  WriteCertificate(files.caCertPath, ca.get());
  WriteCertificate(files.serverCertPath, server.get());
  WritePrivateKey(files.serverKeyPath, serverKey.get());
  return files;
}

std::string PublicKeyPin(const std::string& serverCertPath) {
  FilePtr file(std::fopen(serverCertPath.c_str(), "r"));
  if (!file) throw std::runtime_error("certificate maker: cannot read " + serverCertPath);
  CertPtr cert(PEM_read_X509(file.get(), nullptr, nullptr, nullptr));
  if (!cert) Fail("no certificate in " + serverCertPath);

  // The pin is the SHA-256 of the DER SubjectPublicKeyInfo, as libcurl computes it.
  unsigned char* der = nullptr;
  const int derLength = i2d_PUBKEY(X509_get0_pubkey(cert.get()), &der);
  if (derLength <= 0) Fail("cannot encode the public key of " + serverCertPath);
  unsigned char digest[SHA256_DIGEST_LENGTH];
  SHA256(der, static_cast<size_t>(derLength), digest);
  OPENSSL_free(der);

  unsigned char encoded[4 * ((SHA256_DIGEST_LENGTH + 2) / 3) + 1];
  const int encodedLength = EVP_EncodeBlock(encoded, digest, SHA256_DIGEST_LENGTH);
  return "sha256//" + std::string(reinterpret_cast<const char*>(encoded), static_cast<size_t>(encodedLength));
}

}  // namespace arraysim
