#include "zellap10/plotter/parse_position.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <locale>
#include <sstream>
#include <string_view>
#include <utility>
#include <vector>

namespace zellap10::plotter {

namespace {

constexpr std::size_t kLongestText = 200;
constexpr char kNumber[] = "0123456789.";
constexpr char kLetters[] = "NSEW";

// Why a text is no position.
struct Refusal {
    std::string reason;
};

// The letter d marks degrees.
constexpr std::pair<const char*, char> kSpellings[] = {
    {u8"\u00B0", 'd'},  {u8"\u00BA", 'd'}, {"''", '"'},       {u8"\u2032", '\''},
    {u8"\u2019", '\''}, {u8"\u2033", '"'}, {u8"\u201D", '"'}, {";", ','},
    {u8"\u2212", '-'},  {"\t", ' '},       {u8"\u00A0", ' '}, {":", ' '},
    {"n", 'N'},         {"s", 'S'},        {"e", 'E'},        {"w", 'W'}};

bool contains(std::string_view characters, char c) {
    return characters.find(c) != std::string_view::npos;
}

// One spelling for each mark, and blanks only after numbers.
std::string simplified(std::string text) {
    if (text.size() > kLongestText) throw Refusal{"this is too long for a position"};
    for (const auto& [spelling, character] : kSpellings) {
        const std::size_t length = std::string_view(spelling).size();
        for (std::size_t at; (at = text.find(spelling)) != std::string::npos;)
            text.replace(at, length, 1, character);
    }
    const std::size_t unknown = text.find_first_not_of("0123456789.+-,NSEWd'\" ");
    if (unknown != std::string::npos)
        throw Refusal{"\"" + text.substr(unknown) + "\" has no meaning in a position"};
    // With letters, a hyphen after a number separates degrees from minutes.
    const bool has_letters = text.find_first_of(kLetters) != std::string::npos;
    std::string simple;
    for (const char c : text) {
        const bool after_number = !simple.empty() && contains(kNumber, simple.back());
        const char kept = c == '-' && has_letters && after_number ? ' ' : c;
        if (kept != ' ' || after_number) simple.push_back(kept);
    }
    return simple;
}

// Without a comma: after a letter, before one, at a sign, or in the middle of the numbers.
std::size_t start_of_second(const std::string& text) {
    const std::size_t letter = text.find_first_of(kLetters);
    if (letter == 0) return text.find_first_of(kLetters, 1);
    if (letter != std::string::npos) return letter + 1;
    const std::size_t sign = text.find_first_of("+-", 1);
    if (sign != std::string::npos) return sign;
    std::vector<std::size_t> numbers;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (contains(kNumber, text[i]) && (i == 0 || !contains(kNumber, text[i - 1]))) numbers.push_back(i);
    }
    return numbers.empty() || numbers.size() % 2 != 0 ? std::string::npos : numbers[numbers.size() / 2];
}

std::pair<std::string, std::string> split(const std::string& text) {
    if (std::count(text.begin(), text.end(), ',') > 1)
        throw Refusal{"there is more than one comma; the decimal sign is a point"};
    const std::size_t comma = text.find(',');
    const std::size_t start = comma != std::string::npos ? comma : start_of_second(text);
    if (start == std::string::npos) throw Refusal{"a position is a latitude, a comma and a longitude"};
    return {text.substr(0, start), text.substr(comma != std::string::npos ? start + 1 : start)};
}

// The latitude or the longitude.
struct Part {
    char letter = '\0';
    double degrees = 0.0;

    bool is_longitude() const { return letter == 'E' || letter == 'W'; }
};

double read_degrees(std::string_view text) {
    constexpr double kUnits[] = {1.0, 60.0, 3600.0};
    constexpr char kMarks[] = "d'\"";
    const auto take = [&text](char c) {
        if (!text.empty() && text[0] == c) text.remove_prefix(1);
    };
    double degrees = 0.0;
    bool has_fraction = false;
    for (std::size_t i = 0; i == 0 || !text.empty(); ++i) {
        if (i == 3) throw Refusal{"\"" + std::string(text) + "\" is too much after seconds"};
        const std::string digits(text.substr(0, text.find_first_not_of(kNumber)));
        const std::optional<double> number = parse_decimal(digits);
        if (!number) throw Refusal{"a number is expected, not \"" + std::string(text) + "\""};
        if (has_fraction) throw Refusal{"only the last number can have a fraction"};
        if (i > 0 && !(*number < 60.0)) throw Refusal{"minutes and seconds must be below 60"};
        degrees += *number / kUnits[i];
        has_fraction = contains(digits, '.');
        text.remove_prefix(digits.size());
        take(' ');
        take(kMarks[i]);
    }
    return degrees;
}

// A letter or a sign, and numbers; a letter may be after them.
Part read_part(std::string_view text) {
    if (text.empty()) throw Refusal{"the latitude or the longitude is missing"};
    Part part;
    if (contains(kLetters, text.front())) {
        part.letter = text.front();
        text.remove_prefix(1);
    } else if (contains(kLetters, text.back())) {
        part.letter = text.back();
        text.remove_suffix(1);
    }
    const bool has_sign = !text.empty() && contains("+-", text.front());
    if (has_sign && part.letter != '\0') throw Refusal{"use a sign or a letter, not both"};
    const bool is_negative = has_sign ? text.front() == '-' : contains("SW", part.letter);
    if (has_sign) text.remove_prefix(1);
    part.degrees = read_degrees(text);
    if (is_negative) part.degrees = -part.degrees;
    return part;
}

Position read_position(const std::string& text) {
    const auto [first, second] = split(simplified(text));
    Part latitude = read_part(first);
    Part longitude = read_part(second);
    if ((latitude.letter == '\0') != (longitude.letter == '\0'))
        throw Refusal{"only one of latitude and longitude has a letter"};
    if (latitude.letter != '\0' && latitude.is_longitude() == longitude.is_longitude())
        throw Refusal{latitude.is_longitude() ? "there are two longitudes" : "there are two latitudes"};
    if (latitude.is_longitude()) std::swap(latitude, longitude);
    if (std::abs(latitude.degrees) > 90.0) throw Refusal{"the latitude must be at most 90 degrees"};
    if (std::abs(longitude.degrees) > 180.0) throw Refusal{"the longitude must be at most 180 degrees"};
    return {latitude.degrees, longitude.degrees};
}

}  // namespace

std::optional<double> parse_decimal(const std::string& text) {
    if (text.find_first_not_of("+-.0123456789") != std::string::npos) return std::nullopt;
    std::istringstream stream(text);
    stream.imbue(std::locale::classic());
    double value = 0.0;
    if (!(stream >> value) || !stream.eof()) return std::nullopt;
    return value;
}

ParsedPosition parse_position(const std::string& text) {
    try {
        return {read_position(text), {}};
    } catch (const Refusal& refusal) {
        return {std::nullopt, refusal.reason};
    }
}

}  // namespace zellap10::plotter
