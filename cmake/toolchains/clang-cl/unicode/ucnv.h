#pragma once
// For the headers of libxml2.
struct UConverter;
typedef char16_t UChar;
