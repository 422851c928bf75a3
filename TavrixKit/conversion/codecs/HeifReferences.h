#pragma once

#include <cstddef>
#include <span>

namespace tavrix {

/// Hides references that older HEIF readers do not accept, rejecting the whole file: newer phones
/// refer from one auxiliary picture, or from one block of metadata, to several pictures. Changes
/// such references to an unknown type: those of auxiliary pictures to more than one picture, and
/// all those of metadata, which HeifItems reads instead. The primary picture needs neither. Returns
/// the number of changed references; bytes that are not such a file stay unchanged.
std::size_t relaxHeifReferences(std::span<char> source);

}  // namespace tavrix
