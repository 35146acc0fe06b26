// The file that a catalogue is saved to: a head, the number of files, and each file with its entries. Numbers
// are little-endian, texts and lists have their length before them:
//
//     head      "zellap10 catalogue 2\n"
//     count     8 bytes
//     file      path, sizes and times of the two files (4 times 8 bytes), list of entries
//     entry     inset + 1 or 0 (8), name, metres per pixel or NaN (8), outline, extent (4 times 8), what its
//               insets hide: 0 not computed yet, 1 nothing, 2 a list of outlines (8)
//     outline   list of positions (2 times 8 each)

#include <cmath>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <limits>
#include <system_error>

#include <zellap10/platform/path_text.h>
#include <zellap10/plotter/catalogue_state.h>
#include <zellap10/plotter/inset_area.h>

namespace zellap10::plotter {

namespace {

constexpr char kHead[] = "zellap10 catalogue 2\n";

// What the insets of an entry hide.
constexpr std::uint64_t kUnknown = 0;
constexpr std::uint64_t kNothing = 1;
constexpr std::uint64_t kList = 2;

class Writer {
public:
    std::string bytes = kHead;

    void add(std::uint64_t number) {
        for (int i = 0; i < 8; ++i)
            bytes.push_back(static_cast<char>(number >> 8 * i & 0xFF));
    }
    void add(double number) {
        std::uint64_t bits = 0;
        std::memcpy(&bits, &number, sizeof bits);
        add(bits);
    }
    void add(const std::string& text) {
        add(std::uint64_t{text.size()});
        bytes += text;
    }
    void add(const Outline& outline) {
        add(std::uint64_t{outline.corners.size()});
        for (const Position corner : outline.corners) {
            add(corner.latitude);
            add(corner.longitude);
        }
    }
    void add(const CatalogueEntry& entry) {
        add(entry.inset ? static_cast<std::uint64_t>(*entry.inset) + 1 : std::uint64_t{0});
        add(entry.name);
        add(entry.metres_per_pixel.value_or(std::numeric_limits<double>::quiet_NaN()));
        add(entry.outline);
        for (const double number :
             {entry.extent.south, entry.extent.north, entry.extent.west, entry.extent.width})
            add(number);
        const auto hidden = entry.hidden_areas != nullptr ? entry.hidden_areas->known() : std::nullopt;
        add(entry.hidden_areas == nullptr ? kNothing : hidden ? kList : kUnknown);
        if (!hidden) return;
        add(std::uint64_t{hidden->size()});
        for (const Outline& part : *hidden)
            add(part);
    }
};

// After the end of the bytes everything is 0 and `is_good` is false.
class Reader {
public:
    explicit Reader(const std::string& bytes) : bytes_(bytes), place_(sizeof kHead - 1) {}

    [[nodiscard]] bool is_good() const { return is_good_; }
    std::uint64_t number() {
        std::uint64_t result = 0;
        if (!has(8)) return 0;
        for (std::size_t i = 0; i < 8; ++i)
            result |= std::uint64_t{static_cast<unsigned char>(bytes_[place_ + i])} << 8 * i;
        place_ += 8;
        return result;
    }
    double real() {
        const std::uint64_t bits = number();
        double result = 0.0;
        std::memcpy(&result, &bits, sizeof result);
        return result;
    }
    // The length of a list whose elements have so many bytes at the least, which the file must hold.
    std::uint64_t length(std::uint64_t least) {
        const std::uint64_t count = number();
        if (count > (bytes_.size() - place_) / least) is_good_ = false;
        return is_good_ ? count : 0;
    }
    std::string text() {
        const auto size = static_cast<std::size_t>(length(1));
        std::string result = bytes_.substr(place_, size);
        place_ += size;
        return result;
    }
    Outline outline() {
        Outline result;
        for (std::uint64_t i = length(16); i > 0 && is_good_; --i) {
            const double latitude = real();
            result.corners.push_back({latitude, real()});
        }
        return result;
    }
    CatalogueEntry entry(const std::string& path, const FileStamp& stamp) {
        CatalogueEntry result;
        result.path = path;
        const std::uint64_t inset = number();
        if (inset > std::uint64_t{std::numeric_limits<int>::max()}) is_good_ = false;
        if (inset > 0 && is_good_) result.inset = static_cast<int>(inset - 1);
        result.name = text();
        const double metres = real();
        if (std::isfinite(metres)) result.metres_per_pixel = metres;
        result.outline = outline();
        for (double* const number :
             {&result.extent.south, &result.extent.north, &result.extent.west, &result.extent.width}) {
            *number = real();
            if (!std::isfinite(*number)) is_good_ = false;
        }
        result.hidden_areas = hidden_areas(path, stamp);
        return result;
    }

private:
    std::shared_ptr<const HiddenAreas> hidden_areas(const std::string& path, const FileStamp& stamp) {
        const std::uint64_t kind = number();
        if (kind > kList) is_good_ = false;
        if (kind == kUnknown) return std::make_shared<const HiddenAreas>(path, stamp);
        if (kind == kNothing) return nullptr;
        std::vector<Outline> areas;
        for (std::uint64_t i = length(8); i > 0 && is_good_; --i)
            areas.push_back(outline());
        return std::make_shared<const HiddenAreas>(std::move(areas));
    }
    bool has(std::size_t size) {
        if (bytes_.size() - place_ < size) is_good_ = false;
        return is_good_;
    }

    const std::string& bytes_;
    std::size_t place_;
    bool is_good_ = true;
};

KnownFile known_file(Reader& reader, const std::string& path) {
    KnownFile known;
    known.stamp.chart_size = reader.number();
    known.stamp.chart_time = static_cast<std::int64_t>(reader.number());
    known.stamp.georeference_size = reader.number();
    known.stamp.georeference_time = static_cast<std::int64_t>(reader.number());
    constexpr std::uint64_t kLeastEntry = 72;
    std::vector<CatalogueEntry> entries;
    for (std::uint64_t i = reader.length(kLeastEntry); i > 0 && reader.is_good(); --i)
        entries.push_back(reader.entry(path, known.stamp));
    known.entries = std::make_shared<const std::vector<CatalogueEntry>>(std::move(entries));
    return known;
}

// Empty if the file cannot be read.
std::string bytes_of(const std::string& path) {
    std::ifstream stream(path, std::ios::binary | std::ios::ate);
    const std::streamoff size = stream.tellg();
    std::string bytes(size > 0 ? static_cast<std::size_t>(size) : 0, '\0');
    stream.seekg(0);
    stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return stream ? bytes : std::string();
}

}  // namespace

bool Catalogue::save(const std::string& path) const {
    Writer writer;
    writer.add(std::uint64_t{state_->added.size()});
    for (const auto& [name, known] : state_->added) {
        writer.add(name);
        writer.add(known.stamp.chart_size);
        writer.add(static_cast<std::uint64_t>(known.stamp.chart_time));
        writer.add(known.stamp.georeference_size);
        writer.add(static_cast<std::uint64_t>(known.stamp.georeference_time));
        writer.add(std::uint64_t{known.entries->size()});
        for (const CatalogueEntry& entry : *known.entries)
            writer.add(entry);
    }
    const std::string part = path + ".part";
    std::ofstream stream(part, std::ios::binary);
    stream.write(writer.bytes.data(), static_cast<std::streamsize>(writer.bytes.size()));
    stream.close();
    std::error_code error;
    if (stream) std::filesystem::rename(platform::path_of(part), platform::path_of(path), error);
    if (stream && !error) return true;
    std::filesystem::remove(platform::path_of(part), error);
    return false;
}

bool Catalogue::load(const std::string& path) {
    const std::string bytes = bytes_of(path);
    if (bytes.compare(0, sizeof kHead - 1, kHead) != 0) return false;
    Reader reader(bytes);
    KnownFiles loaded;
    constexpr std::uint64_t kLeastFile = 48;
    for (std::uint64_t i = reader.length(kLeastFile); i > 0 && reader.is_good(); --i) {
        const std::string name = reader.text();
        loaded.insert_or_assign(loaded.end(), name, known_file(reader, name));
    }
    if (!reader.is_good()) return false;
    state_->loaded = std::move(loaded);
    return true;
}

}  // namespace zellap10::plotter
