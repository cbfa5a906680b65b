// The entry of the program.
#include "app/program.h"

int main(int argc, char** argv) { return tilora::app::runProgram(argc, argv, TILORA_UPDATE_SITE); }
