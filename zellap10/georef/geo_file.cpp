#include <zellap10/georef/geo_file.h>

#include <cstddef>
#include <memory>
#include <string>

#include <zellap10/platform/number_text.h>
#include <zellap10/platform/text_compare.h>
#include <zellap10/platform/text_reader.h>

// A georeference file is text, an entry a line:
//
//     Name=Example Bay                  text, all that stands behind the first "="
//     Latitude Offset=0.0002            a number
//     Vertex1=42.5 -71.0                latitude and longitude
//     Point1=-71.0 42.5 100 200         longitude, latitude, pixel row, pixel column
//     [Inset 1]                         what follows is of a new inset
//
// A line counts for the first key of the table that it begins with, whatever stands between the key and the
// "=". All other lines, and entries without an "=", are passed over. A last line without a line end is
// dropped.

namespace {

using zellap10::platform::TextReader;
using zellap10::platform::TextScanner;

constexpr std::size_t kLongestLine = 511;

template <class Element>
Element& append(CList<Element*, Element*>& list, std::unique_ptr<Element> element) {
    list.AddTail(element.get());
    return *element.release();
}

// An entry taken apart at its first "=".
struct Entry {
    std::string label;
    const char* value;
};

// Where entries go: the base record, or the newest inset.
struct Reading {
    CGEORec& base;
    CGEORec* current;
};

using LineHandler = void (*)(Reading& reading);
using EntryHandler = void (*)(CGEORec& record, const Entry& entry);

void start_inset(Reading& reading) {
    reading.current = &append(reading.base.Insets, std::make_unique<CGEORec>());
}

void read_vertex(CGEORec& record, const Entry& entry) {
    auto vertex = std::make_unique<CRefPoint>();
    TextScanner scanner(entry.value);
    if (!scanner.real(vertex->Latitude) || !scanner.real(vertex->Longitude)) return;
    vertex->Name = entry.label.c_str();
    append(record.Vertices, std::move(vertex));
}

void read_point(CGEORec& record, const Entry& entry) {
    auto point = std::make_unique<CRefPoint>();
    TextScanner scanner(entry.value);
    if (!scanner.real(point->Longitude) || !scanner.real(point->Latitude)) return;
    if (!scanner.integer(point->Y) || !scanner.integer(point->X)) return;
    point->Name = entry.label.c_str();
    append(record.Points, std::move(point));
}

void ignore(CGEORec&, const Entry&) {}

// What a line sets: a text, a number, or what a handler makes of it. Only a line handler takes a line without
// an "=".
struct Key {
    const char* front;
    CString CGEORec::*text = nullptr;
    double CGEORec::*number = nullptr;
    EntryHandler entry = nullptr;
    LineHandler line = nullptr;

    constexpr Key(const char* key, CString CGEORec::*field) : front(key), text(field) {}
    constexpr Key(const char* key, double CGEORec::*field) : front(key), number(field) {}
    constexpr Key(const char* key, EntryHandler handler) : front(key), entry(handler) {}
    constexpr Key(const char* key, LineHandler handler) : front(key), line(handler) {}
};

// In the order of comparison: a longer key stands in front of one that it begins with.
// clang-format off
constexpr Key kKeys[] = {
    {"[Inset",                      start_inset},
    {"Bitmap",                      &CGEORec::Bitmap},
    {"Name",                        &CGEORec::Name},
    {"Source Edition",              &CGEORec::SourceEdition},
    {"Scale",                       &CGEORec::Scale},
    {"Order",                       &CGEORec::Order},
    {"Id",                          &CGEORec::Id},
    {"Type",                        &CGEORec::Type},
    {"Source",                      &CGEORec::Source},
    {"Country",                     &CGEORec::Country},
    {"Province/State",              &CGEORec::ProvinceState},
    {"Date Published",              &CGEORec::DatePublished},
    {"Last Update",                 &CGEORec::LastUpdate},
    {"Magnetic Declination Date=",  &CGEORec::MagDeclinationDate},
    {"Magnetic Declination=",       &CGEORec::MagDeclination},
    {"Magnetic Declination Change", &CGEORec::MagDeclinationChange},
    {"Depth Units",                 &CGEORec::DepthUnits},
    {"Sounding Datum",              &CGEORec::SoundingDatum},
    {"Projection",                  &CGEORec::Projection},
    {"PP",                          &CGEORec::PP},
    {"P1",                          &CGEORec::P1},
    {"P2",                          &CGEORec::P2},
    {"P3",                          &CGEORec::P3},
    {"P4",                          &CGEORec::P4},
    {"P5",                          &CGEORec::P5},
    {"P6",                          &CGEORec::P6},
    {"Skew Angle",                  &CGEORec::SkewAngle},
    {"Resolution",                  &CGEORec::Resolution},
    {"Datum",                       &CGEORec::Datum},
    {"Latitude Offset",             &CGEORec::LatitudeOffset},
    {"Longitude Offset",            &CGEORec::LongitudeOffset},
    {"UL Latitude",                 &CGEORec::ULLatitude},
    {"UL Longitude",                &CGEORec::ULLongitude},
    {"LR Latitude",                 &CGEORec::LRLatitude},
    {"LR Longitude",                &CGEORec::LRLongitude},
    {"Number of Vertices",          ignore},
    {"Vertex",                      read_vertex},
    {"Point",                       read_point},
};
// clang-format on

const Key* key_of(const std::string& line) {
    for (const Key& key : kKeys) {
        if (zellap10::platform::begins_with_any_case(line.c_str(), key.front)) return &key;
    }
    return nullptr;
}

void read_line(const std::string& line, Reading& reading) {
    const Key* key = key_of(line);
    if (key == nullptr) return;
    if (key->line != nullptr) return key->line(reading);

    const std::size_t equals = line.find('=');
    if (equals == std::string::npos) return;
    const Entry entry{line.substr(0, equals), line.c_str() + equals + 1};
    if (key->text != nullptr) {
        reading.current->*key->text = entry.value;
    } else if (key->number != nullptr) {
        reading.current->*key->number = zellap10::platform::number_of(entry.value);
    } else {
        key->entry(*reading.current, entry);
    }
}

}  // namespace

void zellap10::georef::read_entries(std::istream& stream, CGEORec& base) {
    TextReader reader(stream);
    Reading reading{base, &base};
    std::string line;
    for (;;) {
        const TextReader::Line end = reader.read_line(line, kLongestLine);
        if (!end.ended) return;
        if (!end.cut) read_line(line, reading);
    }
}
