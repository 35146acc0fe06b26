#pragma once

#include <fstream>

namespace zellap10::platform {

/// Opens a file for reading byte by byte. Only a file of bytes that can be read from end to end is opened: no
/// folder, and no pipe or device, which could make the caller wait for ever. Links are followed.
///
/// @param stream  if it is open already, nothing happens to it and the result is false
/// @return        whether the file was opened. If memory runs out, std::bad_alloc is thrown, and the stream
///                may be open.
bool open_for_reading(std::ifstream& stream, const char* path);

}  // namespace zellap10::platform
