#pragma once

#include <fstream>

namespace zellap10::platform {

/// Opens a file for reading in binary mode. Only a regular file is opened: no folder, and no pipe or device,
/// which could make the caller wait for ever. Links are followed.
///
/// @param stream  if it is open already, it stays unchanged and the result is false
/// @return        whether the file was opened. If memory runs out, std::bad_alloc is thrown, and the stream
///                may be open.
bool open_for_reading(std::ifstream& stream, const char* path);

}  // namespace zellap10::platform
