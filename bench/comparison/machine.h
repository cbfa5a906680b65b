// What the figures were taken on.
#pragma once

#include <string>

#include "run.h"

namespace tilora::bench {

/// Notes the processor, the system and the versions of the programs that are compared; of one that is not installed, that it is not.
void noteMachine(Run& run);

/// The date, and how many programs wanted to run at a time in the last minute.
std::string nowAndLoad();

}  // namespace tilora::bench
