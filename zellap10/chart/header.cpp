#include "zellap10/chart/header.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <iterator>
#include <string>

#include <zellap10/platform/number_text.h>
#include <zellap10/platform/text_reader.h>
#include <zellap10/platform/whole_number.h>

// A line that begins with a blank continues the line before it. A line and its continuations are a record:
//
//     NOS/NA=HARBOUR,RA=0,0,640,480     the chart: name, size in the third and fourth number of RA,
//         DU=254                        and a number; keys in any order
//     RGB/1,255,0,0                     a colour: index, red, green, blue
//
// All other records are ignored.

namespace zellap10::chart {

namespace {

using platform::TextReader;
using platform::TextScanner;
using platform::whole_number;

constexpr std::size_t kLongestRecord = 1023;
constexpr std::size_t kLongestContinuation = 127;

// Columns of a continuation line: its text begins at 4; an "=" at 6 means that it begins with a new key.
constexpr std::size_t kTextColumn = 4;
constexpr std::size_t kEqualsColumn = 6;

bool begins_with(const std::string& text, const char* front) {
    return text.compare(0, std::strlen(front), front) == 0;
}

void join(std::string& record, const std::string& continuation) {
    if (continuation.size() > kEqualsColumn && continuation[kEqualsColumn] == '=') record += ',';
    if (continuation.size() > kTextColumn) record.append(continuation, kTextColumn);
    if (record.size() > kLongestRecord) record.resize(kLongestRecord);
}

// The next record; false if the text ends before the first line end.
bool read_record(TextReader& reader, std::string& record) {
    if (!reader.read_line(record, kLongestRecord).ended) return false;
    while (reader.next_is(' ')) {
        std::string continuation;
        reader.read_line(continuation, kLongestContinuation);
        join(record, continuation);
    }
    return true;
}

// Up to `count` numbers, separated by commas, blanks anywhere. Numbers that are missing do not change.
void scan_numbers(TextScanner& scanner, int* numbers, int count) {
    for (int i = 0; i < count; ++i) {
        if (i > 0 && !scanner.blanks().literal(',')) return;
        if (!scanner.integer(numbers[i])) return;
    }
}

void read_chart(const std::string& record, Header& header) {
    std::memset(header.name, 0, sizeof header.name);
    header.du = header.width = header.height = 0;

    const std::size_t name = record.find("NA=");
    if (name != std::string::npos) {
        const std::size_t start = name + 3;
        const std::size_t length = std::min(record.find(',', start), record.size()) - start;
        record.copy(header.name, std::min(length, sizeof header.name - 1), start);
    }
    const std::size_t range = record.find("RA=");
    if (range != std::string::npos) {
        TextScanner scanner(record.c_str() + range + 3);
        int numbers[4] = {};
        scan_numbers(scanner, numbers, 4);
        header.width = numbers[2];
        header.height = numbers[3];
    }
    const std::size_t units = record.find("DU=");
    if (units != std::string::npos) {
        TextScanner scanner(record.c_str() + units + 3);
        scan_numbers(scanner, &header.du, 1);
    }
}

void read_colour(const std::string& record, Header& header) {
    TextScanner scanner(record.c_str() + 4);
    int numbers[4] = {};
    scan_numbers(scanner, numbers, 4);
    const int index = numbers[0] % 256;
    if (index < 0) return;
    const auto low_8_bits = [](int number) { return static_cast<unsigned char>(number & 0xFF); };
    header.colours[index] = {low_8_bits(numbers[1]), low_8_bits(numbers[2]), low_8_bits(numbers[3]), 0};
    header.colour_count = std::max(header.colour_count, index + 1);
}

// Fits a record to its points and rounds the pixels of its vertices with 0.5. ReadGEO truncates the same
// pixels (read_geo.cpp); the interface defines both.
void refit(CGEORec& record) {
    record.solvepoly();
    for (CRefPoint* vertex : record.Vertices) {
        vertex->X = whole_number(record.wpx(vertex->Longitude, vertex->Latitude) + 0.5);
        vertex->Y = whole_number(record.wpy(vertex->Longitude, vertex->Latitude) + 0.5);
    }
}

}  // namespace

Header read_header(CZellap& chart) {
    Header header{{}, chart.DU, chart.Width, chart.Height, {}, chart.HeaderColourCount};
    std::copy(std::begin(chart.ChartName), std::end(chart.ChartName), header.name);
    std::copy(std::begin(chart.HeaderColours), std::end(chart.HeaderColours), header.colours);

    TextReader reader(chart.TextStream);
    std::string record;
    while (read_record(reader, record)) {
        if (begins_with(record, "NOS/")) {
            read_chart(record, header);
        } else if (begins_with(record, "RGB/")) {
            read_colour(record, header);
        }
    }
    return header;
}

void take_header(const Header& header, int infoOnly, CZellap& chart) {
    std::copy(std::begin(header.name), std::end(header.name), chart.ChartName);
    chart.DU = header.du;
    chart.Width = header.width;
    chart.Height = header.height;
    std::copy(std::begin(header.colours), std::end(header.colours), chart.HeaderColours);
    chart.HeaderColourCount = header.colour_count;
    chart.BaseRec.InsetRect = {0, 0, header.width, header.height};
    // Points exist here only if no close followed an earlier open.
    if (!chart.BaseRec.Points.IsEmpty() && infoOnly == 0) refit(chart.BaseRec);
}

}  // namespace zellap10::chart

void CZellap::ReadHeader(int infoOnly) {
    zellap10::chart::take_header(zellap10::chart::read_header(*this), infoOnly, *this);
}
