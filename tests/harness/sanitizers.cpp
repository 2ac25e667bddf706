// Options of the sanitizers for a program that contains a Java VM.

#if defined(__has_feature)
#define HARNESS_CLANG_SANITIZER __has_feature(address_sanitizer)
#else
#define HARNESS_CLANG_SANITIZER 0
#endif
#if defined(__SANITIZE_ADDRESS__) || HARNESS_CLANG_SANITIZER
#ifdef HARNESS_SANITIZED_AT_SPEED
#define HARNESS_ALLOCATIONS ":malloc_context_size=0:quarantine_size_mb=16"
#else
#define HARNESS_ALLOCATIONS ""
#endif
// The VM handles SIGSEGV itself (it reads null on purpose), and the memory that it never frees is
// no leak of the bridge.
extern "C" const char* __asan_default_options();
extern "C" __attribute__((visibility("default"))) const char* __asan_default_options() {
    return "handle_segv=0:allow_user_segv_handler=1:detect_leaks=0:"
           "detect_stack_use_after_return=0" HARNESS_ALLOCATIONS;
}
#endif
#if defined(__SANITIZE_THREAD__)
// This sanitizer does not see how the VM synchronises its threads; it sees how our code does.
extern "C" const char* __tsan_default_options();
extern "C" __attribute__((visibility("default"))) const char* __tsan_default_options() {
    return "handle_segv=0:ignore_noninstrumented_modules=1";
}
#endif
extern "C" const char* __ubsan_default_options();
extern "C" __attribute__((visibility("default"))) const char* __ubsan_default_options() {
    return "print_stacktrace=1:halt_on_error=1";
}
