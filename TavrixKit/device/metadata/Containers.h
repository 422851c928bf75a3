#pragma once

#include "device/FileBytes.h"
#include "device/MediaMetadata.h"

/// One reader for each kind of file; MetadataReader chooses. Each takes what it finds as far as the
/// file is well-formed, and none throws anything but what the file's own reader throws.
namespace tavrix {

/// JPEG (ITU-T T.81): Exif block, frame size.
MediaMetadata readJpeg(FileBytes& file);
/// PNG: size, Exif block wherever it stands.
MediaMetadata readPng(FileBytes& file);
/// TIFF 6.0 and DNG: fields and size of the full picture among those in the file.
MediaMetadata readTiff(FileBytes& file);
/// HEIF (ISO/IEC 23008-12), HEIC and AVIF: Exif item and size of the primary picture.
MediaMetadata readHeif(FileBytes& file);
/// QuickTime and MP4 (ISO/IEC 14496-12): creation date, position, size of the first picture track.
MediaMetadata readMovie(FileBytes& file);
/// GIF, BMP and WebP: size, and of WebP the Exif block.
MediaMetadata readGif(FileBytes& file);
MediaMetadata readBmp(FileBytes& file);
MediaMetadata readWebp(FileBytes& file);

}  // namespace tavrix
