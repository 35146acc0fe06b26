#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <testing/comma_locale.h>
#include <testing/temp_folder.h>
#include <viewer/gpx.h>
#include <viewer/save_file.h>

namespace {

using namespace viewer;

std::string bytes_of(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::size_t files_in(const std::string& folder) {
    using Iterator = std::filesystem::directory_iterator;
    return static_cast<std::size_t>(std::distance(Iterator(folder), Iterator()));
}

const std::vector<GpxRoute> kRoutes = {
    {u8"Zum Ärmelkanal & <zurück>",
     {{{50.685166666666667, -1.2978333333333334}, u8"Nº 1 \"東\"\tтри"},
      {{-0.1, 180.0}, ""},
      {{1e-12, 359.0}, "a\nb"}}},
    {"", {}},
};

TEST(Gpx, KeepsARoute) {
    const CommaLocale comma;
    const TempFolder folder;
    const std::string path = folder.file("route.gpx");
    ASSERT_EQ(save_gpx(path, kRoutes), "");
    const LoadedGpx loaded = load_gpx(path);
    ASSERT_TRUE(loaded.routes) << loaded.reason;
    ASSERT_EQ(loaded.routes->size(), 2u);
    EXPECT_EQ(loaded.routes->front().name, kRoutes[0].name);
    const std::vector<Waypoint>& waypoints = loaded.routes->front().waypoints;
    ASSERT_EQ(waypoints.size(), 3u);
    const double longitudes[] = {-1.2978333333333334, -180.0, -1.0};
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(waypoints[i].name, kRoutes[0].waypoints[i].name);
        EXPECT_EQ(waypoints[i].position.latitude, kRoutes[0].waypoints[i].position.latitude);
        EXPECT_EQ(waypoints[i].position.longitude, longitudes[i]);
    }
}

struct Row {
    const char* name;
    std::string text;
    const char* reason;  // a part of it; empty for a file that is accepted
};

const std::string kHead =
    "<?xml version=\"1.0\"?>\n<gpx xmlns=\"http://www.topografix.com/GPX/1/1\" version=\"1.1\">\n";
const std::string kPoint = "<rte><rtept lat=\"1\" lon=\"2\"/></rte>\n";

// clang-format off
const Row kRows[] = {
    {"other elements",      kHead + "<wpt lat=\"x\" lon=\"9\"/>" + kPoint + "<trk/></gpx>", ""},
    {"prefix of namespace", "<g:gpx xmlns:g=\"http://www.topografix.com/GPX/1/1\" version=\"1.1\"><g:rte/></g:gpx>", ""},
    {"blanks and a sign",   kHead + "<rte><rtept lat=\" +1.5\n\" lon=\"-.5\"/></rte></gpx>", ""},
    {"cut",                 kHead + kPoint, "line 4: "},
    {"wrong end",           kHead + kPoint + "<rte></rtx></gpx>", "line 4: "},
    {"latitude",            kHead + kPoint + "<rte>\n<rtept lat=\"90.01\" lon=\"2\"/></rte></gpx>", "line 5: lat must be a number from -90 to 90"},
    {"longitude",           kHead + kPoint + "<rte><rtept lat=\"9\" lon=\"-180.01\"/></rte></gpx>", "line 4: lon must be a number from -180 to 180"},
    {"missing",             kHead + "<rte><rtept lat=\"9\"/></rte></gpx>", "line 3: lon"},
    {"exponent",            kHead + "<rte><rtept lat=\"9e0\" lon=\"1\"/></rte></gpx>", "line 3: lat"},
    {"not a number",        kHead + "<rte><rtept lat=\"nan\" lon=\"1\"/></rte></gpx>", "line 3: lat"},
    {"decimal comma",       kHead + "<rte><rtept lat=\"9,5\" lon=\"1\"/></rte></gpx>", "line 3: lat"},
    {"earlier version",     "<gpx xmlns=\"http://www.topografix.com/GPX/1/0\" version=\"1.0\"/>", "line 1: not GPX 1.1"},
    {"no namespace",        "<gpx version=\"1.1\"/>", "not GPX 1.1"},
    {"prefix unknown",      kHead + "\n<x:rte/></gpx>", "line 4: "},
    {"not UTF-8",           kHead + "<rte><name>\xE9</name></rte></gpx>", "line 3: "},
    {"entities",            "<!DOCTYPE gpx [<!ENTITY a \"b\">]>" + kHead.substr(22) + "<rte><name>&a;</name></rte></gpx>", "document type"},
    {"empty",               "", ": "},
};
// clang-format on

TEST(Gpx, RefusesADamagedFileWithItsLine) {
    const TempFolder folder;
    for (const Row& row : kRows) {
        const LoadedGpx loaded = load_gpx(folder.write("route.gpx", row.text));
        EXPECT_EQ(loaded.routes.has_value(), *row.reason == '\0') << row.name << ": " << loaded.reason;
        EXPECT_NE(loaded.reason.find(row.reason), std::string::npos) << row.name << ": " << loaded.reason;
    }
    EXPECT_FALSE(load_gpx(folder.file("")).routes);
    EXPECT_NE(load_gpx(folder.file("none")).reason.find("No such file"), std::string::npos);
}

TEST(Gpx, LeavesTheOldFileIfItCannotSave) {
    const TempFolder folder;
    const std::string path = folder.write("route.gpx", "old");
    for (const Waypoint& bad :
         {Waypoint{{91.0, 0.0}, ""}, Waypoint{{0.0, HUGE_VAL}, ""}, Waypoint{{}, "\xE9"},
          Waypoint{{}, "\x01"}, Waypoint{{}, std::string("a\0b", 3)}})
        EXPECT_NE(save_gpx(path, {{"", {bad}}}), "");

    // A limit on the size of files fails a write as a full disk does.
    const auto old_handler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit old_limit{};
    getrlimit(RLIMIT_FSIZE, &old_limit);
    const rlimit limit{50, old_limit.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
    const std::string reason = save_gpx(path, kRoutes);
    setrlimit(RLIMIT_FSIZE, &old_limit);
    std::signal(SIGXFSZ, old_handler);
    EXPECT_NE(reason.find("File too large"), std::string::npos) << reason;

    EXPECT_EQ(bytes_of(path), "old");
    EXPECT_EQ(files_in(folder.file("")), 1u);
    EXPECT_NE(save_file(folder.file("none/route.gpx"), "new").find("No such file"), std::string::npos);
    EXPECT_NE(save_file(folder.file(""), "new"), "");
}

TEST(SaveFile, KeepsLinksAndPermissions) {
    namespace fs = std::filesystem;
    const TempFolder folder;
    const std::string path = folder.write("file", "old");
    const fs::perms own = fs::perms::owner_read | fs::perms::owner_write;
    fs::permissions(path, own);
    fs::create_symlink("file", folder.file("link"));
    EXPECT_EQ(save_file(folder.file("link"), "new"), "");
    EXPECT_EQ(bytes_of(path), "new");
    EXPECT_TRUE(fs::is_symlink(folder.file("link")));
    EXPECT_EQ(fs::status(path).permissions(), own);

    fs::create_symlink("nowhere", folder.file("dangling"));
    EXPECT_EQ(save_file(folder.file("dangling"), "new"), "");
    EXPECT_FALSE(fs::exists(folder.file("nowhere")));
}

}  // namespace
