#include "zellap10/platform/number_text.h"

#include <cstddef>
#include <cstdlib>
#include <limits>
#include <string_view>

#include <zellap10/platform/c_locale.h>

namespace zellap10::platform {

namespace {

bool is_white_space(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

// Whether strtod took less than the text began: it takes the 42 of "42e", the 0 of "0x" and the inf of
// "infin", but a scan format takes all that may be the front of a number.
//
// @param taken  what strtod took, sign included
// @param next   the character behind it
bool breaks_off(std::string_view taken, char next) {
    if (taken.front() == '-' || taken.front() == '+') taken.remove_prefix(1);
    const auto has = [taken](const char* any) { return taken.find_first_of(any) != std::string_view::npos; };
    const auto lower = [](char c) { return c | 0x20; };  // of letters
    if (lower(next) == 'x') return taken == "0";
    if (lower(next) == 'e') return !has("xXeEnN");
    if (lower(next) == 'p') return has("xX") && !has("pP");
    // All three letters of "inf" or "nan", and no more.
    const int first = taken.size() == 3 ? lower(taken[0]) : 0;
    return (first == 'i' && lower(next) == 'i') || (first == 'n' && next == '(');
}

double number_at(const char* text, const char** end) {
    const CLocaleScope c_locale;
    char* behind = nullptr;
    const double number = std::strtod(text, &behind);
    *end = behind;
    return number;
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
    const char* const start = TextScanner(*this).blanks().rest();
    const char* end = nullptr;
    const double number = number_at(start, &end);
    if (end == start || breaks_off({start, static_cast<std::size_t>(end - start)}, *end)) return false;
    value = number;
    rest_ = end;
    return true;
}

double number_of(const char* text) {
    const char* end = nullptr;
    return number_at(text, &end);
}

}  // namespace zellap10::platform
