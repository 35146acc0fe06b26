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
#include <viewer/files.h>
#include <viewer/gpx.h>

namespace {

using namespace viewer;
namespace fs = std::filesystem;

std::string bytes_of(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void expect_route(const std::string& path, const std::vector<Waypoint>& expected) {
    const LoadedGpx loaded = load_gpx(path);
    ASSERT_EQ(loaded.reason, "");
    ASSERT_EQ(loaded.waypoints.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(loaded.waypoints[i].name, expected[i].name);
        EXPECT_EQ(loaded.waypoints[i].position.latitude, expected[i].position.latitude);
        EXPECT_EQ(loaded.waypoints[i].position.longitude, expected[i].position.longitude);
    }
}

const std::string kHead =
    "<?xml version=\"1.0\"?>\n<gpx xmlns=\"http://www.topografix.com/GPX/1/1\" version=\"1.1\">\n";
const std::string kPoint = "<rte><rtept lat=\"1\" lon=\"2\"/></rte>\n";

TEST(Gpx, KeepsARoute) {
    const CommaLocale comma;
    const TempFolder folder;
    const std::string path = folder.file("route.gpx");
    std::vector<Waypoint> route = {{{50.685166666666667, -1.2978333333333334}, u8"Nº 1 \"東\"\tтри"},
                                   {{-0.1, 180.0}, ""},
                                   {{1e-12, 359.0}, "a\nb"}};
    ASSERT_EQ(save_gpx(path, route), "");
    route[1].position.longitude = -180.0;
    route[2].position.longitude = -1.0;
    expect_route(path, route);
}

TEST(Gpx, KeepsWhatElseIsInTheFile) {
    const TempFolder folder;
    const std::string end = "<trk><trkseg/></trk></gpx>";
    const std::string path = folder.write(
        "route.gpx", kHead +
                         "<metadata/><wpt lat=\"3\" lon=\"4\"/><rte><name>old</name><desc>kept</desc>"
                         "<rtept lat=\"1\" lon=\"2\"><sym>Buoy</sym></rtept><rtept lat=\"5\" lon=\"6\">"
                         "<ele>7</ele></rtept></rte><rte><name>second</name></rte>" +
                         end);
    const std::vector<Waypoint> edited = {{{8.0, 9.0}, "first"}, {{1.0, 2.0}, ""}};
    ASSERT_EQ(save_gpx(path, edited), "");
    expect_route(path, edited);
    EXPECT_EQ(load_gpx(path).routes, 2u);
    const std::string text = bytes_of(path);
    std::size_t last = 0;
    for (const char* part :
         {"<metadata/>", "<wpt ", "<name>old", "<desc>kept", "first", "Buoy", "second", "<trkseg/>"}) {
        EXPECT_GT(text.find(part), last) << part << text;
        last = text.find(part);
    }
    EXPECT_EQ(text.find("<ele>"), std::string::npos);

    folder.write("route.gpx", kHead + end);
    EXPECT_NE(load_gpx(path).reason.find("no route"), std::string::npos);
    ASSERT_EQ(save_gpx(path, edited), "");
    expect_route(path, edited);
    EXPECT_LT(bytes_of(path).find("first"), bytes_of(path).find("<trk>"));
}

TEST(Gpx, RefusesADamagedFileWithItsLine) {
    const struct {
        const char* name;
        std::string text;
        const char* reason;  // a part of it; empty for a file that is accepted
    } rows[] = {
        // clang-format off
        {"other elements",      kHead + "<wpt lat=\"x\" lon=\"9\"/>" + kPoint + "<trk/></gpx>", ""},
        {"prefix of namespace", "<g:gpx xmlns:g=\"http://www.topografix.com/GPX/1/1\" version=\"1.1\"><g:rte/></g:gpx>", ""},
        {"blanks and a sign",   kHead + "<rte><rtept lat=\" +1.5\n\" lon=\"-.5\"/></rte></gpx>", ""},
        {"cut",                 kHead + kPoint, "line 4: "},
        {"latitude",            kHead + kPoint + "<rte>\n<rtept lat=\"90.01\" lon=\"2\"/></rte></gpx>", "line 5: lat must be a number from -90 to 90"},
        {"longitude",           kHead + kPoint + "<rte><rtept lat=\"9\" lon=\"-180.01\"/></rte></gpx>", "line 4: lon must be a number from -180 to 180"},
        {"missing",             kHead + "<rte><rtept lat=\"9\"/></rte></gpx>", "line 3: lon"},
        {"decimal comma",       kHead + "<rte><rtept lat=\"9,5\" lon=\"1\"/></rte></gpx>", "line 3: lat"},
        {"earlier version",     "<gpx xmlns=\"http://www.topografix.com/GPX/1/0\" version=\"1.0\"/>", "line 1: not GPX 1.1"},
        {"prefix unknown",      kHead + "\n<x:rte/></gpx>", "line 4: "},
        {"entities",            "<!DOCTYPE gpx [<!ENTITY a \"b\">]>" + kHead.substr(22) + "<rte><name>&a;</name></rte></gpx>", "document type"},
        {"empty",               "", ": "},
        // clang-format on
    };
    const TempFolder folder;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const std::string path = folder.write("route.gpx", row.text);
        const LoadedGpx loaded = load_gpx(path);
        EXPECT_EQ(loaded.reason.empty(), *row.reason == '\0') << loaded.reason;
        EXPECT_NE(loaded.reason.find(row.reason), std::string::npos) << loaded.reason;
        if (loaded.reason.empty()) continue;
        EXPECT_NE(save_gpx(path, {}).find(row.reason), std::string::npos);
        EXPECT_EQ(bytes_of(path), row.text);
    }
    EXPECT_NE(load_gpx(folder.file("")).reason, "");
    EXPECT_NE(load_gpx(folder.file("none")).reason.find("No such file"), std::string::npos);
}

TEST(Gpx, LeavesTheOldFileIfItCannotSave) {
    const TempFolder folder;
    const std::string old = kHead + "</gpx>";
    const std::string path = folder.write("route.gpx", old);
    for (const Waypoint& bad : {Waypoint{{91.0, 0.0}, ""}, Waypoint{{0.0, HUGE_VAL}, ""},
                                Waypoint{{}, "\xE9"}, Waypoint{{}, "\x01"}})
        EXPECT_NE(save_gpx(path, {bad}), "");

    // A limit on the size of files fails a write as a full disk does.
    const auto old_handler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit old_limit{};
    getrlimit(RLIMIT_FSIZE, &old_limit);
    const rlimit limit{50, old_limit.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
    const std::string reason = save_gpx(path, {{{}, "name"}});
    setrlimit(RLIMIT_FSIZE, &old_limit);
    std::signal(SIGXFSZ, old_handler);
    EXPECT_NE(reason.find("File too large"), std::string::npos) << reason;

    EXPECT_EQ(bytes_of(path), old);
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.file("")), {}), 1);
    EXPECT_NE(save_file(folder.file("none/route.gpx"), "new").find("No such file"), std::string::npos);
    EXPECT_NE(save_file(folder.file(""), "new"), "");
}

TEST(SaveFile, KeepsLinksAndPermissions) {
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
