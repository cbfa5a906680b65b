// xcb/xkb.h names a field `explicit`, which C++ does not take.
#pragma once

// Clang warns of a macro that hides a keyword.
#ifdef __clang__
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wkeyword-macro"
#endif

#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit

#ifdef __clang__
#pragma clang diagnostic pop
#endif
