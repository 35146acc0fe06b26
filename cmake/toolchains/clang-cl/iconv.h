#pragma once
// For the headers of libxml2.
typedef void* iconv_t;
