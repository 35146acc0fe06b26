// Memory that fails now and then while a quilt opens, decodes and draws.

#include <chrono>
#include <memory>
#include <new>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "failing_new.h"
#include <testing/test_chart.h>
#include <zellap10/plotter/quilt.h>

namespace {

using namespace zellap10::plotter;

TEST(QuiltWithoutMemory, DrawsLessAndRecovers) {
    const TempFolder folder;
    auto catalogue = std::make_shared<Catalogue>();
    ASSERT_TRUE(catalogue->add_file(TestChart{1500, 900, 50, -2, 0.001, 0, true}.write(folder, "a")));
    ASSERT_TRUE(catalogue->add_file(TestChart{1500, 900, 50, -1}.write(folder, "b")));
    const MapView view({49.6, -0.9}, 200, {400, 300});
    std::vector<Argb> expected(400 * 300);
    Quilt fresh(catalogue);
    ASSERT_TRUE(fresh.draw_complete(view, ColourScheme::kDay, 0, {expected.data(), 400, 300, 1600}).complete);

    Quilt::Options options;
    options.threads = 2;
    options.workers = 2;
    Quilt quilt(catalogue, options);
    std::vector<Argb> pixels(400 * 300);
    const Bitmap bitmap{pixels.data(), 400, 300, 1600};
    int failures = 0;
    for (unsigned i = 0; i < 300; ++i) {
        failing_new::fails_every = 7 + i * 13 % 400;
        try {
            quilt.draw(view.moved_by(i % 9, 0.0), ColourScheme::kDay, i, bitmap);
        } catch (const std::bad_alloc&) {
            ++failures;
        }
        failing_new::fails_every = 0;
    }
    EXPECT_GT(failures, 10);
    // A chart that lacked memory is tried again after a second.
    bool is_complete = false;
    for (int i = 0; i < 500 && !is_complete; ++i) {
        is_complete = quilt.draw(view, ColourScheme::kDay, 0, bitmap).complete;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    EXPECT_TRUE(is_complete);
    EXPECT_TRUE(pixels == expected);
}

}  // namespace
