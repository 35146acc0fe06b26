#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <testing/temp_folder.h>
#include <viewer/receivers.h>

namespace {

using namespace viewer;
using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr auto kEnd = 500ms;  // 0.2 s, and what a loaded machine adds

// 12:35:19, 12:35:20 and 13:37:20; a broken line in between.
const char kLog[] =
    "$GPRMC,123519,A,4807.038,N,01131.000,E,022.4,084.4,230394,003.1,W*6A\r\n"
    "$GPRMC,123520,A,4807.040,N,01131.000,E,022.4,084.4,230394,003.1,W*6F\r\n"
    "$GPRMC,broken\r\n"
    "$GPRMC,133720,A,4807.042,N,01131.000,E,022.4,084.4,230394,003.1,W*6E\r\n";

// What came until the condition is met or a minute has passed.
FixNews wait_for(FixSource& source, const std::function<bool(const FixNews&)>& is_met) {
    FixNews all;
    const auto deadline = Clock::now() + 60s;
    do {
        const FixNews news = source.take();
        all.fixes.insert(all.fixes.end(), news.fixes.begin(), news.fixes.end());
        all.status = news.status;
        all.broken_lines = news.broken_lines;
        if (is_met(all)) return all;
        std::this_thread::sleep_for(10ms);
    } while (Clock::now() < deadline);
    ADD_FAILURE() << "nothing but " << all.fixes.size() << " fixes, status: " << all.status;
    return all;
}

void expect_end_in_time(std::unique_ptr<FixSource>& source) {
    const auto start = Clock::now();
    source.reset();
    EXPECT_LT(Clock::now() - start, kEnd);
}

bool has_status(const FixNews& news, const char* part) {
    return news.status.find(part) != std::string::npos;
}

TEST(NmeaSource, ReplaysALogByItsTimes) {
    const TempFolder folder;
    const std::string path = folder.write("log", kLog);
    auto source = read_nmea(path, 100.0, {});
    const auto start = Clock::now();
    const FixNews news = wait_for(*source, [](const FixNews& all) { return has_status(all, "ended"); });
    EXPECT_EQ(news.fixes.size(), 3u);
    EXPECT_EQ(news.broken_lines, 1);
    EXPECT_GT(Clock::now() - start, 600ms);  // 1 s, and 60 s of the gap of an hour
    EXPECT_LT(Clock::now() - start, 10s);

    source = read_nmea(path, 1.0, {});
    wait_for(*source, [](const FixNews& all) { return all.fixes.size() == 2; });
    expect_end_in_time(source);

    source = read_nmea(folder.file("none"), 1.0, {});
    wait_for(*source, [](const FixNews& all) { return has_status(all, "No such file"); });
}

TEST(NmeaSource, ReadsAPipeAsItComes) {
    const TempFolder folder;
    const std::string path = folder.file("pipe");
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    auto source = read_nmea(path, 1.0, {});
    expect_end_in_time(source);  // without a writer

    source = read_nmea(path, 1.0, {});
    const int pipe = open(path.c_str(), O_WRONLY | O_CLOEXEC);
    const auto write_part = [&](std::size_t from, std::size_t to) {
        ASSERT_EQ(write(pipe, kLog + from, to - from), static_cast<ssize_t>(to - from));
    };
    write_part(0, 80);
    wait_for(*source, [](const FixNews& all) { return all.fixes.size() == 1; });
    write_part(80, sizeof kLog - 1);
    wait_for(*source, [](const FixNews& all) { return all.fixes.size() == 2; });
    close(pipe);
    wait_for(*source, [](const FixNews& all) { return has_status(all, "ended"); });
}

TEST(FixSource, EndsInTimeAndCallsNothingAfterThat) {
    std::atomic<int> calls{0};
    auto source = std::make_unique<FixSource>(
        [](FixFeed& feed) {
            std::this_thread::sleep_for(700ms);
            feed.set_status("late");
        },
        [&calls] { ++calls; });
    expect_end_in_time(source);
    std::this_thread::sleep_for(800ms);
    EXPECT_EQ(calls, 0);
}

TEST(FixFeed, KeepsTheNewestFixes) {
    FixFeed feed({}, {});
    for (int i = 0; i < 1500; ++i)
        feed.put({Fix{static_cast<double>(i), {}, {}, {}, {}}});
    const std::vector<Fix> fixes = feed.take().fixes;
    ASSERT_EQ(fixes.size(), 1000u);
    EXPECT_EQ(fixes.back().time, 1499.0);
}

TEST(Gpsd, ConnectsAgain) {
    if (std::system("command -v gpsfake >/dev/null") != 0) GTEST_SKIP() << "gpsfake is not installed";
    const TempFolder folder;
    const std::string port = std::to_string(20000 + getpid() % 10000);
    auto source = read_gpsd("localhost:" + port, {});
    if (source == nullptr) GTEST_SKIP() << "built without libgps";
    wait_for(*source, [](const FixNews& all) { return has_status(all, "can't connect"); });

    // A real gpsd that replays a log again and again.
    const std::string command =
        "echo $$; exec gpsfake -q -c 0.1 -P " + port + " " + folder.write("log", kLog) + " >/dev/null 2>&1";
    FILE* const receiver = popen(command.c_str(), "r");
    int process = 0;
    ASSERT_EQ(std::fscanf(receiver, "%d", &process), 1);
    const FixNews news = wait_for(*source, [](const FixNews& all) { return all.fixes.size() > 2; });
    EXPECT_EQ(news.status, "");
    if (!news.fixes.empty()) {
        const Fix& fix = news.fixes.back();
        EXPECT_NEAR(fix.position.latitude, 48.1173, 1e-4);
        EXPECT_NEAR(fix.position.longitude, 11.5167, 1e-4);
        EXPECT_NEAR(fix.speed.value_or(0.0), 22.4, 0.01);
        EXPECT_NEAR(fix.course.value_or(0.0), 84.4, 0.01);
        EXPECT_TRUE(fix.time.has_value());
    }
    kill(process, SIGINT);
    pclose(receiver);
    wait_for(*source, [](const FixNews& all) { return !all.status.empty(); });
    expect_end_in_time(source);
}

}  // namespace
