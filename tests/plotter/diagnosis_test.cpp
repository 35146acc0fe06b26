#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include <testing/refused_charts.h>
#include <zellap10/plotter/diagnosis.h>

#if !defined(_WIN32)
#include <sys/stat.h>
#endif

namespace {

using namespace zellap10::plotter;

namespace fs = std::filesystem;

void expect_diagnosis(const std::optional<Diagnosis>& diagnosis, Fault fault, const std::string& text) {
    ASSERT_TRUE(diagnosis);
    EXPECT_EQ(diagnosis->fault, fault);
    EXPECT_EQ(diagnosis->text, text);
}

TEST(Diagnoses, SayWhatIsWrongWithAChart) {
    const TempFolder folder;
    for (const RefusedChart& row : kRefusedCharts) {
        SCOPED_TRACE(row.name);
        const std::string path = folder.write("chart.cht", row.bytes);
        expect_diagnosis(diagnose_chart(path), row.fault, row.text);
    }
    const std::string sound = folder.write("chart.cht", small_chart_of_height("3"));
    EXPECT_FALSE(diagnose_chart(sound)) << "its table reaches the end of the file";
    const std::string huge = folder.write("huge.cht", small_chart());
    fs::resize_file(huge, 0x80000000u);
    expect_diagnosis(diagnose_chart(huge), Fault::kTooLarge,
                     "The file has 2,147,483,648 bytes; a chart file has at most 2,147,483,647.");
}

TEST(Diagnoses, SayWhatIsWrongWithAPath) {
    const TempFolder folder;
    const std::string pipe = folder.file("pipe.cht");
    expect_diagnosis(diagnose_chart(pipe), Fault::kNoFile, "There is no such file.");
    expect_diagnosis(diagnose_chart(folder.file("")), Fault::kNotAFile, "This is a folder.");
#if !defined(_WIN32)
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    expect_diagnosis(diagnose_chart(pipe), Fault::kNotAFile, "This is a pipe or a device, not a file.");
#endif
    const std::string long_path(10000, 'x');
    for (const char* const path : {"", "/dev/zero", "NUL", "CON", long_path.c_str()})
        EXPECT_TRUE(diagnose_chart(path)) << path;
}

TEST(Diagnoses, SayWhatIsWrongWithAGeoreference) {
    const TempFolder folder;
    const std::string chart = folder.write("c.cht", small_chart());
    const std::string wanted = folder.file("c.GEO");
    const auto expect = [&chart](Fault fault, const std::string& text) {
        expect_diagnosis(diagnose_georeference(chart), fault, text);
    };
    expect(Fault::kNoGeoreference, "There is no georeference file " + wanted + ".");
    folder.write("c.geo", "");
    if (!fs::exists(wanted)) {
        // On systems that tell upper and lower case apart.
        fs::create_directory(folder.file("C.GEO"));
        folder.write("C.Geo", "");
        expect(Fault::kOtherCase,
               "There is no georeference file " + wanted + "; C.Geo differs in upper and lower case.");
        fs::create_directory(wanted);
        expect(Fault::kNotAFile, wanted + ": This is a folder.");
        fs::remove(wanted);
    }
    folder.write("c.GEO", "");
    EXPECT_FALSE(diagnose_georeference(chart));
    EXPECT_TRUE(diagnose_georeference(""));
}

}  // namespace
