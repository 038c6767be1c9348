// zrarray: the library's operations from the shell. `zrarray --help` lists them.
#include "Tool.h"

int main(int argc, char** argv) { return zrarray::RunTool(argc, argv); }
