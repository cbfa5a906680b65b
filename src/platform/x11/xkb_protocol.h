// xcb/xkb.h names a field `explicit`, which C++ does not take.
#pragma once

#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit
