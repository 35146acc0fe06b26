#include "samples/coast.h"

#include <fstream>
#include <initializer_list>
#include <locale>
#include <sstream>
#include <stdexcept>

namespace samples {

namespace {

bool both_at(double a, double b, std::initializer_list<double> cuts) {
    for (const double cut : cuts) {
        if (a == cut && b == cut) return true;
    }
    return false;
}

bool is_cut(Position a, Position b, const Area& covered) {
    return both_at(a.lon, b.lon, {covered.west, 180.0, covered.east}) ||
           both_at(a.lat, b.lat, {covered.south, covered.north});
}

// A ring without a cut becomes one closed line.
void append_shores(const std::vector<Position>& ring, const Area& covered,
                   std::vector<std::vector<Position>>& shores) {
    std::vector<Position> line;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const Position next = ring[(i + 1) % ring.size()];
        line.push_back(ring[i]);
        if (!is_cut(ring[i], next, covered)) continue;
        if (line.size() > 1) shores.push_back(line);
        line.clear();
    }
    if (line.empty()) return;
    line.push_back(ring[0]);
    shores.push_back(line);
}

bool read_position(const std::string& text, Position& place) {
    std::istringstream words(text);
    words.imbue(std::locale::classic());
    return static_cast<bool>(words >> place.lon >> place.lat);
}

}  // namespace

Coast read_coast(const std::string& path, const Area& covered) {
    std::ifstream file(path);
    if (!file) throw std::runtime_error("cannot read " + path);
    Coast coast;
    std::vector<Position> ring;
    const auto end_ring = [&] {
        if (ring.size() > 2) {
            coast.land.push_back(ring);
            append_shores(ring, covered, coast.shores);
        }
        ring.clear();
    };
    for (std::string line; std::getline(file, line);) {
        Position place;
        if (line.empty()) {
            end_ring();
        } else if (line[0] != '#') {
            if (!read_position(line, place)) throw std::runtime_error(path + ": not a vertex: " + line);
            ring.push_back(place);
        }
    }
    end_ring();
    return coast;
}

}  // namespace samples
