#pragma once

namespace tavrix {

/// Converts one file in this process and reports to the parent: the whole program `tavrix-convert`.
/// The process confines itself before it reads the first byte. Takes the arguments that
/// ConversionProcess::run() passes. Returns 2 if they have another form; otherwise ends the process
/// without returning.
int runConversionChild(int argc, char** argv);

}  // namespace tavrix
