#include <algorithm>
#include <cstring>
#include <new>
#include <numeric>
#include <set>
#include <thread>
#include <unordered_set>
#include <utility>

#include <zellap10/plotter/block_painter.h>
#include <zellap10/plotter/chart_choice.h>
#include <zellap10/plotter/chart_store.h>
#include <zellap10/plotter/quilt.h>
#include <zellap10/plotter/screen_grid.h>
#include <zellap10/plotter/team.h>

namespace zellap10::plotter {

namespace {

constexpr std::size_t kLeastMemory = std::size_t{32} << 20;
constexpr int kMostThreads = 64;
constexpr int kMostCoarser = 8;

struct Rectangle {
    int left, top, right, bottom;  // right and bottom are outside
};

std::int64_t block_of(std::int64_t place) {
    return place >= 0 ? place / kBlockSide : (place + 1) / kBlockSide - 1;
}

// The parts of a rectangle of the screen that are in a block each.
void add_parts(const ScreenPlane& plane, const Rectangle& area, std::vector<BlockPart>& parts) {
    if (area.left >= area.right || area.top >= area.bottom) return;
    const std::int64_t left = plane.left() + area.left;
    const std::int64_t right = plane.left() + area.right;
    const std::int64_t top = plane.top() + area.top;
    const std::int64_t bottom = plane.top() + area.bottom;
    for (std::int64_t row = block_of(top); row * kBlockSide < bottom; ++row) {
        for (std::int64_t column = block_of(left); column * kBlockSide < right; ++column) {
            const std::int64_t x = column * kBlockSide;
            const std::int64_t y = row * kBlockSide;
            const int first_x = static_cast<int>(std::max(left - x, std::int64_t{0}));
            const int first_y = static_cast<int>(std::max(top - y, std::int64_t{0}));
            const int end_x = static_cast<int>(std::min(right - x, std::int64_t{kBlockSide}));
            const int end_y = static_cast<int>(std::min(bottom - y, std::int64_t{kBlockSide}));
            parts.push_back({x, y, first_x, first_y, end_x - first_x, end_y - first_y});
        }
    }
}

// A part that lacks chart data.
struct Incomplete {
    BlockPart part;
    std::vector<ChartStore::Missing> missing;
};

// Both parts of a block and what is between them.
BlockPart united(const BlockPart& a, const BlockPart& b) {
    const int x = std::min(a.x, b.x);
    const int y = std::min(a.y, b.y);
    return {a.left,
            a.top,
            x,
            y,
            std::max(a.x + a.width, b.x + b.width) - x,
            std::max(a.y + a.height, b.y + b.height) - y};
}

// Makes one of a part and those of a list that are in the same block. False if there is none.
bool unite(const BlockPart& part, std::vector<BlockPart>& parts) {
    const auto is_other = [&part](const BlockPart& each) {
        return each.left != part.left || each.top != part.top;
    };
    const auto rest = std::partition(parts.begin(), parts.end(), is_other);
    if (rest == parts.end()) return false;
    const BlockPart all = std::accumulate(rest, parts.end(), part, united);
    parts.erase(rest, parts.end());
    parts.push_back(all);
    return true;
}

}  // namespace

class Quilt::Impl {
public:
    Impl(std::shared_ptr<const Catalogue> charts, Options options)
        : catalogue(std::move(charts)),
          store(std::max(options.memory_bytes, kLeastMemory), std::clamp(options.workers, 1, kMostThreads),
                std::move(options.on_more)),
          team_(std::clamp(options.threads, 1, kMostThreads)),
          shares_cores_(std::clamp(options.threads, 1, kMostThreads) +
                            std::clamp(options.workers, 1, kMostThreads) >
                        static_cast<int>(std::thread::hardware_concurrency())) {}

    Result draw(const MapView& view, ColourScheme scheme, Argb background, const Bitmap& bitmap,
                bool is_draft) {
        for (;;) {
            Result result = draw_at(view, scheme, background, bitmap, is_draft);
            if (!store.is_too_small() || coarser_ >= kMostCoarser) return result;
            ++coarser_;
            is_frame_known_ = false;
        }
    }

    Result draw_complete(const MapView& view, ColourScheme scheme, Argb background, const Bitmap& bitmap) {
        set_size(view, bitmap);
        is_frame_known_ = false;
        const ChartChoice choice = choose_charts(*catalogue, view, {});
        const ScreenPlane plane(view);
        std::vector<BlockPart> parts;
        add_parts(plane, {0, 0, width_, height_}, parts);
        std::unordered_set<const CatalogueEntry*> shown;
        // Each chart of a pile may have to be opened and decoded in turn before the next is known to show.
        const std::size_t patience = 3 * choice.charts.size() + 10;
        for (std::size_t failures = 0; !parts.empty() && failures < patience; ++failures) {
            store.begin();
            const Frame frame = frame_of(choice, plane, scheme, background, 0, false);
            const std::size_t before = parts.size();
            const std::vector<Incomplete> rest = paint(frame, parts, bitmap);
            parts.clear();
            for (const Incomplete& each : rest)
                parts.push_back(each.part);
            store.end(false);
            add_shown(frame, shown);
            if (parts.size() < before) failures = 0;
            if (!parts.empty()) store.wait();
        }
        return {parts.empty(), false, in_order(choice, shown)};
    }

    std::optional<Hit> at(const MapView& view, ScreenPixel pixel) {
        const std::optional<Position> position = view.to_position(pixel);
        if (!position) return std::nullopt;
        for (const ChosenChart& chosen : choose_charts(*catalogue, view, readable_).charts) {
            if (!chosen.entry->extent.contains(*position)) continue;
            const auto opened = store.chart(store.file(chosen.entry->path, level_for(chosen.reduction)));
            const OpenedChart::Part* const part =
                opened != nullptr ? opened->part(chosen.entry->inset) : nullptr;
            if (part == nullptr) continue;
            const std::optional<ChartPixel> place = part->georeference.pixel_of(*position);
            if (place && part->area.contains(*place)) return Hit{chosen.entry, *place};
        }
        return std::nullopt;
    }

    void set_catalogue(std::shared_ptr<const Catalogue> charts) {
        catalogue = std::move(charts);
        readable_.clear();
        shown_.clear();
        is_frame_known_ = false;
    }

    std::shared_ptr<const Catalogue> catalogue;
    ChartStore store;

private:
    Result draw_at(const MapView& view, ColourScheme scheme, Argb background, const Bitmap& bitmap,
                   bool is_draft) {
        set_size(view, bitmap);
        ChartChoice choice = choose_charts(*catalogue, view, readable_);
        readable_ = std::move(choice.readable);
        const ScreenPlane plane(view);
        const std::uint64_t changes = store.changes();
        const bool is_same_plane = plane_ && plane_->is_same(plane);
        const bool is_known = is_frame_known_ && is_same_plane && scheme == scheme_ &&
                              background == background_ && changes == changes_;
        if (!is_known) {
            coarser_ = is_same_plane ? coarser_ : 0;
            shown_.clear();
        }
        is_draft = is_draft && !is_same_plane;
        std::vector<BlockPart> parts =
            is_known ? parts_after_pan(plane, bitmap) : parts_of(plane, {0, 0, width_, height_});
        std::vector<Incomplete> incomplete = is_known ? std::move(incomplete_) : std::vector<Incomplete>();
        is_frame_known_ = false;
        store.begin();
        const Frame frame = frame_of(choice, plane, scheme, background, coarser_, is_draft);
        add_more(plane, incomplete, parts);
        // Has those compared with their files that the new parts do not need.
        for (const auto& chart : frame.charts) {
            if (shown_.count(chart->chosen.entry) > 0) static_cast<void>(store.chart(*chart->file));
        }
        for (Incomplete& each : paint(frame, parts, bitmap))
            incomplete.push_back(std::move(each));
        store.end(true);
        add_shown(frame, shown_);
        plane_ = plane;
        scheme_ = scheme;
        background_ = background;
        changes_ = changes;
        incomplete_ = std::move(incomplete);
        is_frame_known_ = !is_draft && store.changes() == changes;
        return {is_frame_known_ && incomplete_.empty(), is_draft, in_order(choice, shown_)};
    }

    void set_size(const MapView& view, const Bitmap& bitmap) {
        const int width = std::clamp(bitmap.width, 0, view.size().width);
        const int height = std::clamp(bitmap.height, 0, view.size().height);
        if (width == width_ && height == height_) return;
        is_frame_known_ = false;
        width_ = height_ = 0;
        pixels_.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
        width_ = width;
        height_ = height;
    }

    Frame frame_of(const ChartChoice& choice, const ScreenPlane& plane, ColourScheme scheme, Argb background,
                   int coarser, bool is_draft) {
        Frame frame{plane, SchemeTable(scheme), background, &boxes_, coarser, is_draft, {}};
        for (const ChosenChart& chart : choice.charts)
            frame.charts.push_back(std::make_unique<FrameChart>(chart, file_of(chart, coarser)));
        return frame;
    }

    ChartStore::File& file_of(const ChosenChart& chart, int coarser) {
        return store.file(chart.entry->path, std::min(level_for(chart.reduction) + coarser, kMostLevel));
    }

    static std::vector<BlockPart> parts_of(const ScreenPlane& plane, const Rectangle& area) {
        std::vector<BlockPart> parts;
        add_parts(plane, area, parts);
        return parts;
    }

    // Moves the frame, copies it to the bitmap and returns what came into view.
    std::vector<BlockPart> parts_after_pan(const ScreenPlane& plane, const Bitmap& bitmap) {
        const std::int64_t right = plane.left() - plane_->left();
        const std::int64_t down = plane.top() - plane_->top();
        if (right >= width_ || -right >= width_ || down >= height_ || -down >= height_)
            return parts_of(plane, {0, 0, width_, height_});
        const int dx = static_cast<int>(right);
        const int dy = static_cast<int>(down);
        const int kept = width_ - std::abs(dx);
        const int left = std::max(-dx, 0);
        const auto keep_row = [&](int y) {
            if (dx != 0 || dy != 0) {
                std::memmove(row_of(y) + left, row_of(y + dy) + std::max(dx, 0),
                             static_cast<std::size_t>(kept) * sizeof(Argb));
            }
            copy_row(bitmap, left, y, kept);
        };
        for (int y = 0; dy >= 0 && y < height_ - dy; ++y)
            keep_row(y);
        for (int y = height_ - 1; dy < 0 && y >= -dy; --y)
            keep_row(y);
        std::vector<BlockPart> parts;
        const int top = std::max(-dy, 0);
        const int bottom = height_ - std::max(dy, 0);
        add_parts(plane, {0, 0, width_, top}, parts);
        add_parts(plane, {0, bottom, width_, height_}, parts);
        add_parts(plane, {0, top, left, bottom}, parts);
        add_parts(plane, {width_ - std::max(dx, 0), top, width_, bottom}, parts);
        return parts;
    }

    // Moves those of the incomplete parts for which there is more to draw now to the parts to draw, and drops
    // what is no longer in view.
    void add_more(const ScreenPlane& plane, std::vector<Incomplete>& incomplete,
                  std::vector<BlockPart>& parts) {
        std::vector<Incomplete> waiting;
        for (Incomplete& each : incomplete) {
            BlockPart& part = each.part;
            const auto held = [](std::int64_t place) {
                return static_cast<int>(std::clamp<std::int64_t>(place, 0, kBlockSide));
            };
            const int right = std::min(part.x + part.width, held(plane.left() + width_ - part.left));
            const int bottom = std::min(part.y + part.height, held(plane.top() + height_ - part.top));
            part.x = std::max(part.x, held(plane.left() - part.left));
            part.y = std::max(part.y, held(plane.top() - part.top));
            part.width = right - part.x;
            part.height = bottom - part.y;
            if (part.width <= 0 || part.height <= 0) continue;
            if (unite(part, parts)) continue;
            if (!each.missing.empty() && store.is_missing(each.missing))
                waiting.push_back(std::move(each));
            else
                parts.push_back(part);
        }
        incomplete = std::move(waiting);
    }

    // Returns the parts that are not complete. A part is copied to the bitmap while it is in the cache. A
    // draft is not kept, and is drawn into the bitmap if its rows are aligned.
    std::vector<Incomplete> paint(const Frame& frame, const std::vector<BlockPart>& parts,
                                  const Bitmap& bitmap) {
        std::vector<char> is_complete(parts.size(), 0);
        std::vector<std::vector<ChartStore::Missing>> missing(parts.size());
        auto* const upper_left = static_cast<unsigned char*>(bitmap.pixels);
        const bool is_direct = frame.is_draft && bitmap.stride % std::ptrdiff_t{sizeof(Argb)} == 0 &&
                               reinterpret_cast<std::uintptr_t>(upper_left) % alignof(Argb) == 0;
        Argb* const origin = is_direct ? reinterpret_cast<Argb*>(upper_left) : pixels_.data();
        const std::ptrdiff_t stride = is_direct ? bitmap.stride / std::ptrdiff_t{sizeof(Argb)} : width_;
        const std::function<void(int)> paint_part = [&](int i) {
            const auto index = static_cast<std::size_t>(i);
            const BlockPart& part = parts[index];
            const int x = static_cast<int>(part.left + part.x - frame.plane.left());
            const int y = static_cast<int>(part.top + part.y - frame.plane.top());
            Argb* const pixels = origin + y * stride + x;
            try {
                BlockPainter painter(frame, store);
                is_complete[index] = painter.paint(part, pixels, stride) ? 1 : 0;
                missing[index] = std::move(painter.missing());
            } catch (const std::bad_alloc&) {
                for (int row = 0; row < part.height; ++row)
                    std::fill_n(pixels + row * stride, part.width, frame.background);
            }
            for (int row = 0; !is_direct && row < part.height; ++row)
                copy_row(bitmap, x, y + row, part.width);
        };
        if (shares_cores_) store.pause();
        team_.run(static_cast<int>(parts.size()), paint_part);
        store.resume();
        std::vector<Incomplete> rest;
        for (std::size_t i = 0; i < parts.size(); ++i) {
            if (is_complete[i] == 0) rest.push_back({parts[i], std::move(missing[i])});
        }
        return rest;
    }

    static void add_shown(const Frame& frame, std::unordered_set<const CatalogueEntry*>& shown) {
        for (const auto& chart : frame.charts) {
            if (chart->is_shown) shown.insert(chart->chosen.entry);
        }
    }

    static std::vector<const CatalogueEntry*> in_order(
        const ChartChoice& choice, const std::unordered_set<const CatalogueEntry*>& shown) {
        std::vector<const CatalogueEntry*> charts;
        for (const ChosenChart& chart : choice.charts) {
            if (shown.count(chart.entry) > 0) charts.push_back(chart.entry);
        }
        return charts;
    }

    Argb* row_of(int y) { return pixels_.data() + static_cast<std::ptrdiff_t>(y) * width_; }

    void copy_row(const Bitmap& bitmap, int x, int y, int width) {
        auto* const row = static_cast<unsigned char*>(bitmap.pixels) + y * bitmap.stride;
        const auto bytes = [](int count) { return static_cast<std::size_t>(count) * sizeof(Argb); };
        std::memcpy(row + bytes(x), row_of(y) + x, bytes(width));
    }

    Team team_;
    const bool shares_cores_;  // the threads that draw with those that decode
    BoxTables boxes_;
    // The last frame. If it is known, a view of the same plane needs only what is new.
    std::vector<Argb> pixels_;
    int width_ = 0;
    int height_ = 0;
    bool is_frame_known_ = false;
    std::vector<Incomplete> incomplete_;  // parts of it
    std::optional<ScreenPlane> plane_;
    ColourScheme scheme_ = ColourScheme::kDay;
    Argb background_ = 0;
    std::uint64_t changes_ = 0;
    std::unordered_set<const CatalogueEntry*> shown_;
    std::set<const CatalogueEntry*> readable_;
    int coarser_ = 0;
};

Quilt::Quilt(std::shared_ptr<const Catalogue> catalogue, Options options)
    : impl_(std::make_unique<Impl>(std::move(catalogue), std::move(options))) {}

Quilt::Quilt(std::shared_ptr<const Catalogue> catalogue) : Quilt(std::move(catalogue), Options()) {}

Quilt::~Quilt() = default;

void Quilt::set_catalogue(std::shared_ptr<const Catalogue> catalogue) {
    impl_->set_catalogue(std::move(catalogue));
}

Quilt::Result Quilt::draw(const MapView& view, ColourScheme scheme, Argb background, const Bitmap& bitmap) {
    return impl_->draw(view, scheme, background, bitmap, false);
}

Quilt::Result Quilt::draw_draft(const MapView& view, ColourScheme scheme, Argb background,
                                const Bitmap& bitmap) {
    return impl_->draw(view, scheme, background, bitmap, true);
}

Quilt::Result Quilt::draw_complete(const MapView& view, ColourScheme scheme, Argb background,
                                   const Bitmap& bitmap) {
    return impl_->draw_complete(view, scheme, background, bitmap);
}

std::optional<Quilt::Hit> Quilt::at(const MapView& view, ScreenPixel pixel) {
    return impl_->at(view, pixel);
}

std::vector<Quilt::Problem> Quilt::problems() const {
    std::vector<Problem> problems;
    for (auto& [path, text] : impl_->store.problems())
        problems.push_back({path, text});
    return problems;
}

}  // namespace zellap10::plotter
