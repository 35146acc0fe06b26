#include "zellap10/georef/geo_file.h"

#include <cstddef>
#include <memory>
#include <string>

#include <zellap10/platform/number_text.h>
#include <zellap10/platform/text_compare.h>
#include <zellap10/platform/text_reader.h>

// A georeference file is text, one entry per line:
//
//     Name=Example Bay                  text, everything after the first "="
//     Latitude Offset=0.0002            a number
//     Vertex1=42.5 -71.0                latitude and longitude
//     Point1=-71.0 42.5 100 200         longitude, latitude, pixel row, pixel column
//     [Inset 1]                         a new inset, to which the next entries belong
//
// A line is an entry for the first key of the table that it begins with, whatever is between the key and the
// "=". Other lines, entries without an "=" and a last line without a line end are ignored.

namespace {

using zellap10::platform::begins_with_any_case;
using zellap10::platform::TextReader;
using zellap10::platform::TextScanner;

constexpr std::size_t kLongestLine = 511;
constexpr char kInset[] = "[Inset";

// Far more than a chart has room for. Seven bytes of a file are enough for a record, which takes over 3 KiB.
constexpr int kMostInsets = 10000;

template <class Element>
Element& append(CList<Element*, Element*>& list, std::unique_ptr<Element> element) {
    list.AddTail(element.get());
    return *element.release();
}

// An entry, split at its first "=".
struct Entry {
    std::string label;
    const char* value;
};

template <CString CGEORec::*Field>
void set_text(CGEORec& record, const Entry& entry) {
    record.*Field = entry.value;
}

template <double CGEORec::*Field>
void set_number(CGEORec& record, const Entry& entry) {
    record.*Field = zellap10::platform::number_of(entry.value);
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

struct Key {
    const char* front;
    void (*read)(CGEORec& record, const Entry& entry);
};

// In the order of comparison: a longer key comes before a key that is its prefix.
// clang-format off
constexpr Key kKeys[] = {
    {"Bitmap",                      set_text<&CGEORec::Bitmap>},
    {"Name",                        set_text<&CGEORec::Name>},
    {"Source Edition",              set_text<&CGEORec::SourceEdition>},
    {"Scale",                       set_text<&CGEORec::Scale>},
    {"Order",                       set_text<&CGEORec::Order>},
    {"Id",                          set_text<&CGEORec::Id>},
    {"Type",                        set_text<&CGEORec::Type>},
    {"Source",                      set_text<&CGEORec::Source>},
    {"Country",                     set_text<&CGEORec::Country>},
    {"Province/State",              set_text<&CGEORec::ProvinceState>},
    {"Date Published",              set_text<&CGEORec::DatePublished>},
    {"Last Update",                 set_text<&CGEORec::LastUpdate>},
    {"Magnetic Declination Date=",  set_text<&CGEORec::MagDeclinationDate>},
    {"Magnetic Declination=",       set_text<&CGEORec::MagDeclination>},
    {"Magnetic Declination Change", set_text<&CGEORec::MagDeclinationChange>},
    {"Depth Units",                 set_text<&CGEORec::DepthUnits>},
    {"Sounding Datum",              set_text<&CGEORec::SoundingDatum>},
    {"Projection",                  set_text<&CGEORec::Projection>},
    {"PP",                          set_text<&CGEORec::PP>},
    {"P1",                          set_text<&CGEORec::P1>},
    {"P2",                          set_text<&CGEORec::P2>},
    {"P3",                          set_text<&CGEORec::P3>},
    {"P4",                          set_text<&CGEORec::P4>},
    {"P5",                          set_text<&CGEORec::P5>},
    {"P6",                          set_text<&CGEORec::P6>},
    {"Skew Angle",                  set_number<&CGEORec::SkewAngle>},
    {"Resolution",                  set_text<&CGEORec::Resolution>},
    {"Datum",                       set_text<&CGEORec::Datum>},
    {"Latitude Offset",             set_number<&CGEORec::LatitudeOffset>},
    {"Longitude Offset",            set_number<&CGEORec::LongitudeOffset>},
    {"UL Latitude",                 set_text<&CGEORec::ULLatitude>},
    {"UL Longitude",                set_text<&CGEORec::ULLongitude>},
    {"LR Latitude",                 set_text<&CGEORec::LRLatitude>},
    {"LR Longitude",                set_text<&CGEORec::LRLongitude>},
    {"Number of Vertices",          ignore},
    {"Vertex",                      read_vertex},
    {"Point",                       read_point},
};
// clang-format on

void read_entry(const std::string& line, CGEORec& record) {
    const std::size_t equals = line.find('=');
    if (equals == std::string::npos) return;
    for (const Key& key : kKeys) {
        if (!begins_with_any_case(line.c_str(), key.front)) continue;
        key.read(record, {line.substr(0, equals), line.c_str() + equals + 1});
        return;
    }
}

}  // namespace

void zellap10::georef::read_entries(std::istream& stream, CGEORec& base) {
    TextReader reader(stream);
    CGEORec* current = &base;
    int insets = 0;
    std::string line;
    for (;;) {
        const TextReader::Line end = reader.read_line(line, kLongestLine);
        if (!end.ended) return;
        if (end.cut) continue;
        if (begins_with_any_case(line.c_str(), kInset)) {
            if (++insets > kMostInsets) return;
            current = &append(base.Insets, std::make_unique<CGEORec>());
        } else {
            read_entry(line, *current);
        }
    }
}
