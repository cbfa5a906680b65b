# The sources of the macOS desktop, for the build on macOS and for its checks elsewhere: plain C++ over interfaces in C, then Objective-C++.
set(TILORA_MACOS_CPP call_guard.cpp cf_values.cpp elements.cpp hot_keys.cpp trust.cpp window_list.cpp)
set(TILORA_MACOS_OBJCXX)
