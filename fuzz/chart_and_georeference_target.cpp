#include <string>

#include "chart_checks.h"
#include "record_checks.h"

// A chart and its georeference through the chart object. An input consists of arguments, the chart file, a
// separating line and the georeference file.

namespace {

constexpr char kParting[] = "\n=GEO=\n";
constexpr std::int64_t kPixelBudget = 100000;

// Whether the counts of a record are `times` those of the file.
bool same_counts(const CGEORec& record, const CGEORec& file, int times) {
    return record.Points.GetCount() == times * file.Points.GetCount() &&
           record.Vertices.GetCount() == times * file.Vertices.GetCount() &&
           record.Insets.GetCount() == times * file.Insets.GetCount();
}

void open_and_check(const std::string& path, bool info_first, fuzz::Input& arguments, fuzz::Kept& kept) {
    fuzz::Budget budget(kPixelBudget);
    PlainChart chart;
    const CGEORec* base = chart.GetBaseGeoRec();
    fuzz::OwnRecord file;
    const std::string geo_path = path.substr(0, path.rfind('.')) + ".GEO";
    file.ReadGEO(geo_path.c_str(), 1);
    if (info_first) {
        fuzz::must(chart.OpenZellap(path.c_str(), 1) == 1, "an existing file opens for information");
        fuzz::check_refusals(chart, kept);
        fuzz::check_unfitted_record(*base);
        fuzz::keep_record(*base, kept);
        fuzz::must(same_counts(*base, file, 1), "opening for information reads the georeference");
        // Without a close here, the next open finds points and fits them while it reads the header.
    }
    const int opened = chart.OpenZellap(path.c_str(), 0);
    fuzz::must(chart.GetBaseGeoRec() == base, "the address of the record is constant");
    fuzz::keep_record(*base, kept);
    if (opened == 0) {
        fuzz::check_refusals(chart, kept);
        fuzz::must(same_counts(*base, file, info_first ? 1 : 0),
                   "a refused chart leaves its record unchanged");
        return;
    }
    fuzz::must(same_counts(*base, file, info_first ? 2 : 1), "an open adds the contents of the file");
    fuzz::check_open_chart(chart, arguments, budget, kept);
    if (!info_first) fuzz::check_fitted_record(file, *chart.GetBaseGeoRec(), arguments, kept);
    chart.CloseZellap();
    fuzz::must(base->Points.IsEmpty() && base->Vertices.IsEmpty() && base->Insets.IsEmpty(),
               "a close empties the record");
    fuzz::check_refusals(chart, kept);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    fuzz::Input arguments = input.part(fuzz::kArguments);
    const int way = arguments.take<std::uint8_t>();
    const std::string bytes = input.rest();
    const std::size_t parting = bytes.find(kParting);
    const std::string path = fuzz::folder().write("both.cht", bytes.substr(0, parting));
    if (parting != std::string::npos) {
        fuzz::folder().write("both.GEO", bytes.substr(parting + sizeof kParting - 1));
    } else {
        fuzz::folder().remove("both.GEO");
    }
    fuzz::Kept kept;
    open_and_check(path, (way & 1) != 0, arguments, kept);
    return 0;
}
