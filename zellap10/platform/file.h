#pragma once

#include <fstream>

namespace zellap10::platform {

/// Opens a file for reading byte by byte. Only a file of bytes that can be read from end to end is opened: no
/// folder, and no pipe or device, which could make the caller wait for ever. Links are followed.
///
/// @return  whether it was opened; std::bad_alloc, thrown where memory runs out, may leave the stream open
bool open_for_reading(std::ifstream& stream, const char* path);

}  // namespace zellap10::platform
