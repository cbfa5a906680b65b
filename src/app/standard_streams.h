// The first three file descriptors.
#pragma once

namespace tilora::app {

/// Opens on nothing those of standard input, output and error that are closed, so that no other file or connection gets their number and
/// what is printed. To be called before anything is opened.
void openStandardStreams();

}  // namespace tilora::app
