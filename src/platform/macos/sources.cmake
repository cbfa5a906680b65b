# The sources of the macOS desktop, for the build on macOS and for its checks elsewhere: plain C++ over interfaces in C, then Objective-C++.
set(TILORA_MACOS_CPP call_guard.cpp cf_values.cpp elements.cpp hot_keys.cpp modifier_flags.cpp trust.cpp utf16.cpp window_list.cpp)
set(TILORA_MACOS_OBJCXX key_monitor.mm login_service.mm main_queue.mm ns_strings.mm panel.mm pointer.mm reopening.mm screens.mm shell.mm
                        status_item.mm user_defaults.mm workspace.mm)
