#include <zellap10/platform/number_text.h>

#include <cstdlib>
#include <limits>

#include <zellap10/platform/c_locale.h>

namespace zellap10::platform {

namespace {

bool is_white_space(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

}  // namespace

TextScanner& TextScanner::blanks() {
    while (is_white_space(*rest_))
        ++rest_;
    return *this;
}

bool TextScanner::literal(char character) {
    if (*rest_ != character || character == '\0') return false;
    ++rest_;
    return true;
}

bool TextScanner::integer(int& value) {
    using Limits = std::numeric_limits<int>;
    const char* at = TextScanner(*this).blanks().rest();
    const bool negative = *at == '-';
    if (*at == '-' || *at == '+') ++at;
    if (!is_digit(*at)) return false;

    // The magnitude stops growing one above the largest int, which is the magnitude of the smallest.
    constexpr long long kHold = static_cast<long long>(Limits::max()) + 1;
    long long magnitude = 0;
    for (; is_digit(*at); ++at) {
        magnitude = magnitude * 10 + (*at - '0');
        if (magnitude > kHold) magnitude = kHold;
    }
    if (negative) {
        value = static_cast<int>(-magnitude);
    } else {
        value = magnitude < kHold ? static_cast<int>(magnitude) : Limits::max();
    }
    rest_ = at;
    return true;
}

bool TextScanner::real(double& value) {
    const CLocaleScope c_locale;
    char* end = nullptr;
    const double number = std::strtod(rest_, &end);
    if (end == rest_) return false;
    value = number;
    rest_ = end;
    return true;
}

double number_of(const char* text) {
    double value = 0.0;
    TextScanner(text).real(value);
    return value;
}

}  // namespace zellap10::platform
