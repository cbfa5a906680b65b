// What the figures were taken on.
#pragma once

#include <string>

#include "run.h"

namespace tilora::bench {

/// Notes the processor, the system and the versions of the programs that are compared; of one that is not installed, that it is not.
void noteMachine(Run& run);

/// The date, and how many programs wanted to run at a time in the last minute.
std::string nowAndLoad();

/// Of the time of all processors since the system started, in ticks: all of it, and what went to other machines while there was work to do
/// here, as the host tells a virtual machine (proc(5), "steal"). Zeros when the system does not say.
struct ProcessorTicks {
  double all = 0;
  double stolen = 0;
};
ProcessorTicks processorTicks();

}  // namespace tilora::bench
