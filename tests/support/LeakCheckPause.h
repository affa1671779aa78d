// Takes what is allocated meanwhile out of the leak check, where a library leaks by itself.
#pragma once

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define HX_WITH_LEAK_CHECK
#endif
#elif defined(__SANITIZE_ADDRESS__)
#define HX_WITH_LEAK_CHECK
#endif

#ifdef HX_WITH_LEAK_CHECK
#include <sanitizer/lsan_interface.h>
using LeakCheckPause = __lsan::ScopedDisabler;
#else
struct LeakCheckPause {
    LeakCheckPause() {}
    ~LeakCheckPause() {}
    LeakCheckPause(const LeakCheckPause&) = delete;
    LeakCheckPause& operator=(const LeakCheckPause&) = delete;
};
#endif
