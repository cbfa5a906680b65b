// Nothing here is asked for; the standard library includes it by this name.
#pragma once
