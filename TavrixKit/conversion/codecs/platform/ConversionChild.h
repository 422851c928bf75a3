#pragma once

namespace tavrix {

/// The whole program `tavrix-convert`: converts one file in this process and reports to the parent,
/// or decodes pictures for it (PictureChild). The process confines itself before it reads the first
/// byte. Takes the arguments that ConversionProcess::run() or PictureDecoder pass. Returns 2 if
/// they have another form; otherwise ends the process without returning.
int runConversionChild(int argc, char** argv);

}  // namespace tavrix
