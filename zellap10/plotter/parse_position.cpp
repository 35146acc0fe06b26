#include "zellap10/plotter/parse_position.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <iterator>
#include <limits>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

namespace zellap10::plotter {

namespace {

// What a token is: a number, the mark of a unit, or the character itself of + - , N S E W.
constexpr char kNumber = '0', kDegrees = 'd', kMinutes = 'm', kSeconds = 's', kBlank = ' ';

struct Spelling {
    std::string_view text;
    char kind;
};

// A longer spelling comes before its own beginning.
constexpr Spelling kSpellings[] = {
    {"\xC2\xB0", kDegrees},
    {"\xC2\xBA", kDegrees},
    {"''", kSeconds},
    {"'", kMinutes},
    {"\xE2\x80\xB2", kMinutes},
    {"\xE2\x80\x99", kMinutes},
    {"\xE2\x80\xB3", kSeconds},
    {"\"", kSeconds},
    {"\xE2\x80\x9D", kSeconds},
    {"\xE2\x88\x92", '-'},
    {"-", '-'},
    {"+", '+'},
    {",", ','},
    {";", ','},
    {" ", kBlank},
    {"\t", kBlank},
    {"\xC2\xA0", kBlank},
    {":", kBlank},
    {"N", 'N'},
    {"n", 'N'},
    {"S", 'S'},
    {"s", 'S'},
    {"E", 'E'},
    {"e", 'E'},
    {"W", 'W'},
    {"w", 'W'},
};

struct Token {
    char kind;
    double number = 0.0;
    bool has_fraction = false;

    bool is(std::string_view kinds) const { return kinds.find(kind) != std::string::npos; }
};
using Tokens = std::vector<Token>;

// The latitude or the longitude.
struct Part {
    char letter = '\0';
    bool is_negative = false;
    Tokens numbers;

    bool is_longitude() const { return letter == 'E' || letter == 'W'; }
};

class Parser {
public:
    ParsedPosition parse(std::string_view text) {
        Position position;
        if (!read_tokens(text) || !split() || !order_parts() ||
            !evaluate(first_, "latitude", 90.0, position.latitude) ||
            !evaluate(second_, "longitude", 180.0, position.longitude))
            return {std::nullopt, reason_};
        return {position, {}};
    }

private:
    bool refuse(std::string reason) {
        reason_ = std::move(reason);
        return false;
    }

    bool read_tokens(std::string_view text);
    bool read_number(std::string_view text);
    bool split();
    Tokens::iterator start_of_second();
    bool read_part(Tokens::iterator begin, Tokens::iterator end, Part& part);
    bool order_parts();
    bool evaluate(const Part& part, const std::string& name, double limit, double& degrees);

    Tokens tokens_;
    Part first_, second_;
    std::string reason_;
};

// The character of UTF-8 at the front.
std::string front_of(std::string_view text) {
    std::size_t length = 1;
    while (length < text.size() && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80)
        ++length;
    return std::string(text.substr(0, length));
}

bool Parser::read_number(std::string_view text) {
    Token token{kNumber, std::numeric_limits<double>::infinity(), text.find('.') != std::string::npos};
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, token.number, std::chars_format::fixed);
    if (read.ptr != end || read.ec == std::errc::invalid_argument)
        return refuse("\"" + std::string(text) + "\" is not a number");
    tokens_.push_back(token);
    return true;
}

bool Parser::read_tokens(std::string_view text) {
    // With letters, a hyphen after a digit separates degrees from minutes.
    const bool has_letters = text.find_first_of("NSEWnsew") != std::string::npos;
    bool after_number = false;
    while (!text.empty()) {
        std::size_t length = std::min(text.find_first_not_of("0123456789."), text.size());
        if (length > 0) {
            if (!read_number(text.substr(0, length))) return false;
            after_number = true;
        } else {
            const auto matches = [text](const Spelling& spelling) {
                return text.substr(0, spelling.text.size()) == spelling.text;
            };
            const auto* const found = std::find_if(std::begin(kSpellings), std::end(kSpellings), matches);
            if (found == std::end(kSpellings))
                return refuse("\"" + front_of(text) + "\" has no meaning in a position");
            const bool is_separator = found->kind == '-' && has_letters && after_number;
            if (found->kind != kBlank && !is_separator) tokens_.push_back({found->kind});
            length = found->text.size();
            after_number = false;
        }
        text.remove_prefix(length);
    }
    return !tokens_.empty() || refuse("there is no position");
}

// Without a comma: after a letter, before one, at a sign, or in the middle. The beginning if there is no such
// place.
Tokens::iterator Parser::start_of_second() {
    const auto find = [this](std::ptrdiff_t from, std::string_view kinds) {
        return std::find_if(tokens_.begin() + from, tokens_.end(),
                            [&](const Token& t) { return t.is(kinds); });
    };
    const auto letter = find(0, "NSEW");
    if (letter == tokens_.begin()) return find(1, "NSEW");
    if (letter != tokens_.end()) return letter + 1;
    const auto sign = find(1, "+-");
    if (sign != tokens_.end()) return sign;
    const auto numbers =
        std::count_if(tokens_.begin(), tokens_.end(), [](const Token& t) { return t.is("0"); });
    if (numbers == 1) return tokens_.end();
    if (numbers % 2 != 0) return tokens_.begin();
    auto middle = find(0, "0");
    for (auto left = numbers / 2; left > 0; --left)
        middle = find(middle - tokens_.begin() + 1, "0");
    return middle;
}

bool Parser::split() {
    const auto is_comma = [](const Token& token) { return token.is(","); };
    const auto commas = std::count_if(tokens_.begin(), tokens_.end(), is_comma);
    if (commas > 1) return refuse("there is more than one comma; the decimal sign is a point");
    const auto comma = std::find_if(tokens_.begin(), tokens_.end(), is_comma);
    if (commas == 1)
        return read_part(tokens_.begin(), comma, first_) && read_part(comma + 1, tokens_.end(), second_);
    const auto start = start_of_second();
    if (start == tokens_.begin()) return refuse("put a comma between the latitude and the longitude");
    return read_part(tokens_.begin(), start, first_) && read_part(start, tokens_.end(), second_);
}

bool Parser::read_part(Tokens::iterator begin, Tokens::iterator end, Part& part) {
    bool has_sign = false;
    for (auto token = begin; token != end; ++token) {
        if (token->is("0")) {
            part.numbers.push_back(*token);
        } else if (token->is("+-")) {
            if (token != begin) return refuse("a sign is only allowed before the degrees");
            has_sign = true;
            part.is_negative = token->kind == '-';
        } else if (token->is("NSEW")) {
            if (part.letter != '\0') return refuse("there are too many of the letters N, S, E and W");
            if (token != begin && token + 1 != end)
                return refuse("a letter must be before or after the numbers");
            part.letter = token->kind;
        } else {
            const std::size_t count = token->kind == kDegrees ? 1 : token->kind == kMinutes ? 2 : 3;
            if (token == begin || !(token - 1)->is("0") || part.numbers.size() != count)
                return refuse("degrees, minutes and seconds must be in this order");
        }
    }
    if (has_sign && part.letter != '\0') return refuse("use a sign or a letter, not both");
    part.is_negative = part.is_negative || part.letter == 'S' || part.letter == 'W';
    return true;
}

bool Parser::order_parts() {
    if (second_.numbers.empty() && second_.letter == '\0')
        return refuse(first_.is_longitude() ? "the latitude is missing" : "the longitude is missing");
    if ((first_.letter == '\0') != (second_.letter == '\0'))
        return refuse("only one of latitude and longitude has a letter");
    if (first_.letter != '\0' && first_.is_longitude() == second_.is_longitude())
        return refuse(first_.is_longitude() ? "there are two longitudes" : "there are two latitudes");
    if (first_.is_longitude()) std::swap(first_, second_);
    return true;
}

bool Parser::evaluate(const Part& part, const std::string& name, double limit, double& degrees) {
    const std::string units[] = {"degrees", "minutes", "seconds"};
    const double parts_of_degree[] = {1.0, 60.0, 3600.0};
    const std::size_t count = part.numbers.size();
    if (count == 0) return refuse("the " + name + " has no number");
    if (count > std::size(units)) return refuse("the " + name + " has more than three numbers");
    for (std::size_t i = 0; i < count; ++i) {
        const Token& token = part.numbers[i];
        if (token.has_fraction && i + 1 < count)
            return refuse(units[i] + " with a fraction must be the last number");
        if (i > 0 && !(token.number < 60.0)) return refuse(units[i] + " must be below 60");
        degrees += token.number / parts_of_degree[i];
    }
    if (!(degrees <= limit))
        return refuse("the " + name + " must be at most " + std::to_string(static_cast<int>(limit)) +
                      " degrees");
    if (part.is_negative) degrees = -degrees;
    return true;
}

}  // namespace

ParsedPosition parse_position(const std::string& text) {
    return Parser().parse(text);
}

}  // namespace zellap10::plotter
