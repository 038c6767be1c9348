// A library that takes a slice of the static TLS space when loaded: loaded again and again under
// new names, it uses the space up.
extern "C" {
__attribute__((tls_model("initial-exec"))) thread_local char zr_static_tls_slice[64];
char* zr_static_tls_slice_address() { return zr_static_tls_slice; }
}
