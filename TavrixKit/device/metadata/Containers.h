#pragma once

#include "device/metadata/FileBytes.h"
#include "device/metadata/MediaMetadata.h"

/// One reader per file format; MetadataReader chooses among them. Each returns the metadata of the
/// well-formed part of the file and throws only what the RangedReader of the file throws.
namespace tavrix {

/// Reads a JPEG file (ITU-T T.81): Exif block and frame size.
MediaMetadata readJpeg(FileBytes& file);
/// Reads a PNG file: size, and the Exif block at any position in the file.
MediaMetadata readPng(FileBytes& file);
/// Reads a TIFF 6.0 or DNG file, or a camera's raw file of that structure: its fields, and the size
/// of the full picture among those in the file.
MediaMetadata readTiff(FileBytes& file);
/// Reads a HEIF (ISO/IEC 23008-12), HEIC or AVIF file: Exif item and size of the primary picture. A
/// sequence of pictures without an Exif date has that of its film header.
MediaMetadata readHeif(FileBytes& file);
/// Reads a QuickTime or MP4 file (ISO/IEC 14496-12): creation date, position, content
/// identifier, and size of the first picture track.
MediaMetadata readMovie(FileBytes& file);
/// Reads a GIF file: size.
MediaMetadata readGif(FileBytes& file);
/// Reads a BMP file: size.
MediaMetadata readBmp(FileBytes& file);
/// Reads a WebP file: size and Exif block.
MediaMetadata readWebp(FileBytes& file);

}  // namespace tavrix
