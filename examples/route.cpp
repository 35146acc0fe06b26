#include "examples/route.h"

#include <locale>
#include <sstream>
#include <stdexcept>

namespace {

struct Row {
    const char* chart;
    Waypoint waypoint;
};

// clang-format off
const Row kRows[] = {
    // chart               name                            latitude longitude
    {"ENGLISH CHANNEL",  {"off Start Point",                {50.11,    -3.61}}},
    {"ENGLISH CHANNEL",  {"off Saint Catherine's Point",    {50.52,    -1.28}}},
    {"ENGLISH CHANNEL",  {"off Bembridge",                  {50.68,    -0.99}}},
    {"ENGLISH CHANNEL",  {"Spithead",                       {50.76,    -1.12}}},
    {"WESTERN CHANNEL",  {"off Wolf Rock",                  {49.85,    -5.84}}},
    {"WESTERN CHANNEL",  {"off the Lizard",                 {49.88,    -5.20}}},
    {"WESTERN CHANNEL",  {"off Start Point",                {50.12,    -3.60}}},
    {"WESTERN CHANNEL",  {"off Les Sept Iles",              {48.98,    -3.56}}},
    {"CHANNEL LAMBERT",  {"west of Ouessant",               {48.50,    -5.45}}},
    {"CHANNEL LAMBERT",  {"off the Casquets",               {49.85,    -2.56}}},
    {"CHANNEL LAMBERT",  {"off the Pointe de Barfleur",     {49.81,    -1.21}}},
    {"CHANNEL LAMBERT",  {"Dover Strait",                   {50.98,     1.42}}},
    {"GULF OF MAINE",    {"off Thacher Island",             {42.62,   -70.45}}},
    {"GULF OF MAINE",    {"off Cape Elizabeth",             {43.50,   -70.06}}},
    {"GULF OF MAINE",    {"off Mount Desert Rock",          {43.88,   -68.13}}},
    {"GULF OF MAINE",    {"off Grand Manan",                {44.41,   -66.75}}},
    {"FIJI ISLANDS",     {"off Suva",                      {-18.22,   178.46}}},
    {"FIJI ISLANDS",     {"north of Moala",                {-18.41,   179.90}}},
    {"FIJI ISLANDS",     {"east of the 180th meridian",    {-17.75,  -179.61}}},
    {"FIJI ISLANDS",     {"Nanuku Passage",                {-16.75,  -179.25}}},
};
// clang-format on

}  // namespace

std::vector<Waypoint> sample_route(const std::string& chart_name) {
    std::vector<Waypoint> route;
    for (const Row& row : kRows) {
        if (chart_name == row.chart) route.push_back(row.waypoint);
    }
    return route;
}

Waypoint waypoint_of(const std::string& argument) {
    std::istringstream text(argument);
    text.imbue(std::locale::classic());
    Waypoint waypoint;
    char comma = 0;
    if (!(text >> waypoint.position.latitude >> comma >> waypoint.position.longitude) || comma != ',' ||
        !text.eof()) {
        throw std::runtime_error(argument + " is no waypoint such as 50.1,-4.3");
    }
    return waypoint;
}
