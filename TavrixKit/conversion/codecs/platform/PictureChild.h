#pragma once

namespace tavrix {

/// Decodes pictures in this process, one request after another, until the parent closes its end of
/// the socket. The process confines itself before it reads the first byte. Takes the arguments that
/// PictureDecoder passes. Ends the process without returning.
[[noreturn]] void runPictureChild(char** argv);

}  // namespace tavrix
