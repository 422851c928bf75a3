#include "conversion/codecs/platform/ConversionChild.h"

int main(int argc, char** argv) { return tavrix::runConversionChild(argc, argv); }
