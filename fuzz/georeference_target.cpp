#include <string>

#include "record_checks.h"

// Georeference files without a chart, with the fit and all conversions. An input consists of arguments and
// the file.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    fuzz::Input arguments = input.part(fuzz::kArguments);
    const std::string path = fuzz::folder().write("input.GEO", input.rest());

    fuzz::Kept kept;
    fuzz::OwnRecord file;
    file.ReadGEO(path.c_str(), 1);
    fuzz::check_unfitted_record(file);
    fuzz::keep_record(file, kept);

    fuzz::OwnRecord fitted;
    fitted.ReadGEO(path.c_str(), 0);
    fuzz::keep_record(fitted, kept);
    fuzz::check_fitted_record(file, fitted, arguments, kept);
    return 0;
}
