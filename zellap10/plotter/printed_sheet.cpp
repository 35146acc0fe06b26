#include "zellap10/plotter/printed_sheet.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <iterator>
#include <utility>
#include <vector>

#include <zellap10/platform/path_text.h>
#include <zellap10/plotter/background_task.h>

namespace zellap10::plotter {

namespace {

constexpr int kReductions[] = {1, 2, 3, 4, 6, 8, 12, 16, 24, 32, 48, 64};
constexpr int kSteps = sizeof kReductions / sizeof kReductions[0];
constexpr std::chrono::milliseconds kBetweenPictures{16};
constexpr unsigned char kNoPixel = 255;  // beyond the colour indexes, which have 7 bits

int blocks(int pixels, int reduction) {
    return pixels / reduction + (pixels % reduction > 0);
}

// The first block of a view that has its middle on the chart, also if the wanted one is not finite.
int held(double wanted, int length, int count) {
    const double half = std::floor(length / 2.0);
    const double rounded = std::round(wanted);
    return static_cast<int>(rounded > -half ? std::min(rounded, count - 1 - half) : -half);
}

std::size_t area(int width, int height) {
    return static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
}

bool same(const Viewport& a, const Viewport& b) {
    return a.column == b.column && a.row == b.row && a.reduction == b.reduction && a.width == b.width &&
           a.height == b.height;
}

}  // namespace

// What the thread and its owner share: the colour indexes of a viewport, row by row.
class PrintedSheet::Job : public BackgroundJob {
public:
    Job(std::shared_ptr<CZellap> chart, std::function<void()> on_change)
        : BackgroundJob(std::move(on_change)), chart_(std::move(chart)) {}

    void run() override;
    bool is_damaged();
    bool draw(const Viewport& viewport, ColourScheme scheme, Argb background, const Bitmap& bitmap);

private:
    void follow(const Viewport& now);

    const std::shared_ptr<CZellap> chart_;
    Viewport kept_;  // under mutex_, as all below
    std::vector<unsigned char> indexes_;
    std::vector<bool> is_drawn_;  // rows
    std::ptrdiff_t missing_rows_ = 0;
    bool is_damaged_ = false;
};

void PrintedSheet::Job::run() {
    Lock lock(mutex_);
    auto last_picture = std::chrono::steady_clock::now();
    std::vector<unsigned char> line;
    for (;;) {
        changed_.wait(lock, [this] { return ending_ || missing_rows_ > 0; });
        if (ending_) return;
        const auto row = std::find(is_drawn_.begin(), is_drawn_.end(), false) - is_drawn_.begin();
        const Viewport kept = kept_;
        line.assign(static_cast<std::size_t>(kept.width), kNoPixel);
        lock.unlock();
        const Viewport of_row{kept.column, kept.row + static_cast<int>(row), kept.reduction, kept.width, 1};
        const bool is_read = read_viewport(*chart_, of_row, kNoPixel, line.data());
        lock.lock();
        is_damaged_ = is_damaged_ || !is_read;
        if (same(kept, kept_)) {
            std::copy(line.begin(), line.end(), indexes_.begin() + row * kept.width);
            is_drawn_[static_cast<std::size_t>(row)] = true;
            --missing_rows_;
        }
        const auto now = std::chrono::steady_clock::now();
        if (missing_rows_ > 0 && now - last_picture < kBetweenPictures) continue;
        last_picture = now;
        announce(lock);
    }
}

bool PrintedSheet::Job::is_damaged() {
    const Lock lock(mutex_);
    return is_damaged_;
}

// Makes the nearest view of the present viewport from what is kept. Rows that only moved up or down are good.
void PrintedSheet::Job::follow(const Viewport& now) {
    std::vector<unsigned char> indexes(area(now.width, now.height), kNoPixel);
    std::vector<bool> is_drawn(static_cast<std::size_t>(now.height));
    const bool only_rows_moved =
        now.reduction == kept_.reduction && now.column == kept_.column && now.width == kept_.width;
    const auto old_block = [&](int first, int i, int old_first, int old_count) {
        const std::int64_t block = (std::int64_t{first} + i) * now.reduction / kept_.reduction - old_first;
        return static_cast<int>(std::clamp<std::int64_t>(block, -1, old_count));
    };
    for (int y = 0; y < now.height; ++y) {
        const int old_y = old_block(now.row, y, kept_.row, kept_.height);
        if (old_y < 0 || old_y >= kept_.height) continue;
        is_drawn[static_cast<std::size_t>(y)] = only_rows_moved && is_drawn_[static_cast<std::size_t>(old_y)];
        const unsigned char* const from = indexes_.data() + area(kept_.width, old_y);
        unsigned char* const to = indexes.data() + area(now.width, y);
        for (int x = 0; x < now.width; ++x) {
            const int old_x = old_block(now.column, x, kept_.column, kept_.width);
            if (old_x >= 0 && old_x < kept_.width) to[x] = from[old_x];
        }
    }
    indexes_ = std::move(indexes);
    is_drawn_ = std::move(is_drawn);
    missing_rows_ = std::count(is_drawn_.begin(), is_drawn_.end(), false);
    kept_ = now;
    changed_.notify_all();
}

bool PrintedSheet::Job::draw(const Viewport& viewport, ColourScheme scheme, Argb background,
                             const Bitmap& bitmap) {
    const Lock lock(mutex_);
    if (!same(viewport, kept_)) follow(viewport);
    auto colours = colours_of(*chart_, scheme);
    colours[kNoPixel] = background;
    const unsigned char* from = indexes_.data();
    for (int y = 0; y < bitmap.height; ++y) {
        auto* to = static_cast<unsigned char*>(bitmap.pixels) + y * bitmap.stride;
        for (int x = 0; x < bitmap.width; ++x, to += sizeof(Argb))
            std::memcpy(to, &colours[*from++], sizeof(Argb));  // the address may be odd
    }
    return missing_rows_ == 0;
}

std::unique_ptr<PrintedSheet> PrintedSheet::open(const std::string& path, std::function<void()> on_change) {
    auto chart = std::make_shared<CZellap>();
    if (chart->OpenZellap(path.c_str(), 0) == 0) return nullptr;
    const CSize size = chart->GetDocumentSize();
    if (size.cx < 1 || size.cy < 1) return nullptr;
    return std::unique_ptr<PrintedSheet>(new PrintedSheet(path, std::move(chart), std::move(on_change)));
}

PrintedSheet::PrintedSheet(const std::string& path, std::shared_ptr<CZellap> chart,
                           std::function<void()> on_change)
    : path_(path),
      name_(chart->ChartName),
      chart_(std::move(chart)),
      georeferences_(record(), chart_->GetDocumentSize()),
      job_(std::make_shared<Job>(chart_, std::move(on_change))),
      task_(std::make_unique<BackgroundTask>(job_)) {
    if (name_.empty()) name_ = platform::text_of(platform::path_of(path).filename());
}

PrintedSheet::~PrintedSheet() = default;

void PrintedSheet::stop() {
    task_->stop();
}

const CGEORec& PrintedSheet::record(std::optional<int> inset) const {
    const CGEORec& base = *chart_->GetBaseGeoRec();
    return inset ? **(base.Insets.begin() + *inset) : base;
}

bool PrintedSheet::is_damaged() const {
    return job_->is_damaged();
}

bool PrintedSheet::draw(ColourScheme scheme, Argb background, const Bitmap& bitmap) {
    if (viewport_.width != bitmap.width || viewport_.height != bitmap.height) return false;
    return job_->draw(viewport_, scheme, background, bitmap);
}

ScreenSize PrintedSheet::size() const {
    const CSize size = chart_->GetDocumentSize();
    return {size.cx, size.cy};
}

// Shows a pixel of the chart at a place of the view, at one of the reductions.
void PrintedSheet::put(ChartPixel pixel, int step, ScreenPixel at) {
    step_ = std::clamp(step, 0, kSteps - 1);
    viewport_.reduction = kReductions[step_];
    const ScreenPixel now = viewport_.to_screen(pixel);
    viewport_.column =
        held(viewport_.column + now.x - at.x, viewport_.width, blocks(size().width, viewport_.reduction));
    viewport_.row =
        held(viewport_.row + now.y - at.y, viewport_.height, blocks(size().height, viewport_.reduction));
}

void PrintedSheet::resize(ScreenSize view) {
    const ChartPixel centre = viewport_.to_chart(middle());
    viewport_.width = std::max(view.width, 0);
    viewport_.height = std::max(view.height, 0);
    put(centre, step_, middle());
}

void PrintedSheet::show_all() {
    const ScreenSize all = size();
    const auto fits = [&](int reduction) {
        return blocks(all.width, reduction) <= viewport_.width &&
               blocks(all.height, reduction) <= viewport_.height;
    };
    const int* const fitting = std::find_if(std::begin(kReductions), std::end(kReductions), fits);
    const int step = static_cast<int>(fitting - std::begin(kReductions));
    put({(all.width - 1) / 2.0, (all.height - 1) / 2.0}, step, middle());
}

void PrintedSheet::show(ChartPixel pixel, double reduction) {
    const auto off = [reduction](int r) { return std::abs(std::log(reduction / r)); };
    const int* const nearest = std::min_element(std::begin(kReductions), std::end(kReductions),
                                                [&](int a, int b) { return off(a) < off(b); });
    put(pixel, static_cast<int>(nearest - std::begin(kReductions)), middle());
}

void PrintedSheet::pan(double right, double down) {
    const ScreenPixel centre = middle();
    put(viewport_.to_chart(centre), step_, {centre.x + right, centre.y + down});
}

void PrintedSheet::zoom(int steps, ScreenPixel about) {
    put(viewport_.to_chart(about), step_ - std::clamp(steps, -kSteps, kSteps), about);
}

}  // namespace zellap10::plotter
