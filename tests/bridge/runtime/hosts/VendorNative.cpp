// A native library that the vendor's assembly calls.
#ifdef _WIN32
#define VENDOR_NATIVE_API __declspec(dllexport)
#else
#define VENDOR_NATIVE_API __attribute__((visibility("default")))
#endif

extern "C" VENDOR_NATIVE_API int vendorAnswer(void);

int vendorAnswer(void) { return 42; }
