#include "zellap10/platform/number_text.h"

#include <cstddef>
#include <limits>
#include <string_view>

#include <zellap10/platform/c_locale.h>
#include <zellap10/platform/text_compare.h>

namespace zellap10::platform {

namespace {

bool is_white_space(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

// Whether the text read by strtod is the beginning of an incomplete longer word: the 0 of "0x", the inf of
// "infin" and the nan of "nan(". A scan format refuses these.
//
// @param taken  the text read by strtod, without a sign
// @param next   the character after it
bool is_incomplete(std::string_view taken, char next) {
    if (lower_case(next) == 'x') return taken == "0";
    const char first = taken.size() == 3 ? lower_case(taken[0]) : '\0';
    return (first == 'i' && lower_case(next) == 'i') || (first == 'n' && next == '(');
}

// The length of an exponent without digits after the text read by strtod, such as "e+" in "42e+"; else 0.
int incomplete_exponent(std::string_view taken, const char* rest) {
    const auto has = [taken](const char* any) { return taken.find_first_of(any) != std::string_view::npos; };
    const bool begins =
        lower_case(*rest) == 'e' ? !has("xXeEnN") : lower_case(*rest) == 'p' && has("xX") && !has("pP");
    if (!begins) return 0;
    return rest[1] == '+' || rest[1] == '-' ? 2 : 1;
}

double number_at(const char* text, const char** end) {
    char* after = nullptr;
    const double number = strtod_in_c_locale(text, &after);
    *end = after;
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
    if (end == start) return false;
    std::string_view taken(start, static_cast<std::size_t>(end - start));
    if (taken.front() == '-' || taken.front() == '+') taken.remove_prefix(1);
    if (is_incomplete(taken, *end)) return false;
    value = number;
    rest_ = end + incomplete_exponent(taken, end);
    return true;
}

double number_of(const char* text) {
    const char* end = nullptr;
    return number_at(text, &end);
}

}  // namespace zellap10::platform
