#pragma once

#include <cstddef>
#include <span>

namespace tavrix {

/// Newer phones refer from one auxiliary picture, and from one block of metadata, to several
/// pictures of a HEIF file, which readers of the format before that refuse with the whole file.
/// Makes such references ones of a type that nobody knows: those of auxiliary pictures to more than
/// one, and those of metadata all, for HeifItems reads it. The primary picture needs neither. Gives
/// how many were changed; bytes that are no such file stay as they are.
std::size_t relaxHeifReferences(std::span<char> source);

}  // namespace tavrix
