#include "viewer/gpx.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <new>
#include <system_error>
#include <tuple>

#include <libxml/parser.h>
#include <libxml/tree.h>

#include <viewer/save_file.h>
#include <zellap10/plotter/parse_position.h>

namespace viewer {

namespace fs = std::filesystem;

namespace {

constexpr char kNamespace[] = "http://www.topografix.com/GPX/1/1";
constexpr char kNewFile[] =
    "<gpx xmlns=\"http://www.topografix.com/GPX/1/1\" version=\"1.1\" creator=\"zellap10\"/>";
constexpr std::uintmax_t kMostBytes = 64 << 20;

template <auto Free>
struct Freed {
    template <typename T>
    void operator()(T* what) const {
        Free(what);
    }
};
using Context = std::unique_ptr<xmlParserCtxt, Freed<xmlFreeParserCtxt>>;
using Document = std::unique_ptr<xmlDoc, Freed<xmlFreeDoc>>;

// A reason to refuse a file.
struct Refusal {
    long line;
    std::string text;
};

const xmlChar* xml(const char* text) {
    return reinterpret_cast<const xmlChar*>(text);
}

// A text of libxml2, which is UTF-8, and its release.
std::string taken(xmlChar* text) {
    std::string copy = text != nullptr ? reinterpret_cast<const char*>(text) : "";
    xmlFree(text);
    return copy;
}

bool is_element(const xmlNode* node, const char* name) {
    return node->type == XML_ELEMENT_NODE && xmlStrEqual(node->name, xml(name)) && node->ns != nullptr &&
           xmlStrEqual(node->ns->href, xml(kNamespace));
}

double coordinate(xmlNode* node, const char* attribute, double limit) {
    std::string text = taken(xmlGetNoNsProp(node, xml(attribute)));
    constexpr char kBlanks[] = " \t\r\n";
    text.erase(text.find_last_not_of(kBlanks) + 1);
    text.erase(0, text.find_first_not_of(kBlanks));
    const auto value = zellap10::plotter::parse_decimal(text);
    if (value && std::fabs(*value) <= limit) return *value;
    const std::string limits = std::to_string(static_cast<int>(limit));
    throw Refusal{xmlGetLineNo(node),
                  std::string(attribute) + " must be a number from -" + limits + " to " + limits};
}

std::vector<xmlNode*> elements_of(const xmlNode* parent, const char* name) {
    std::vector<xmlNode*> elements;
    for (xmlNode* node = parent->children; node != nullptr; node = node->next) {
        if (is_element(node, name)) elements.push_back(node);
    }
    return elements;
}

std::string name_of(const xmlNode* parent) {
    const auto names = elements_of(parent, "name");
    return names.empty() ? std::string() : taken(xmlNodeGetContent(names.front()));
}

Waypoint waypoint_of(xmlNode* element) {
    return {{coordinate(element, "lat", 90.0), coordinate(element, "lon", 180.0)}, name_of(element)};
}

std::string bytes_of(const std::string& path) {
    std::error_code error;
    const std::uintmax_t size = fs::file_size(path, error);
    if (error) throw Refusal{0, error.message()};
    if (size > kMostBytes) throw Refusal{0, "larger than 64 MiB"};
    std::string bytes(static_cast<std::size_t>(size), '\0');
    std::ifstream file(path, std::ios::binary);
    if (!file.read(bytes.data(), static_cast<std::streamsize>(size))) throw Refusal{0, "cannot be read"};
    return bytes;
}

Document parse(const std::string& bytes) {
    const Context context(xmlNewParserCtxt());
    if (context == nullptr) throw std::bad_alloc();
    constexpr int kOptions =
        XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_BIG_LINES | XML_PARSE_NOBLANKS;
    Document document(xmlCtxtReadMemory(context.get(), bytes.data(), static_cast<int>(bytes.size()), nullptr,
                                        nullptr, kOptions));
    const auto* error = xmlCtxtGetLastError(context.get());
    if (document == nullptr || !context->nsWellFormed) {
        std::string text = error != nullptr && error->message != nullptr ? error->message : "no XML";
        text.erase(text.find_last_not_of('\n') + 1);
        throw Refusal{error != nullptr ? error->line : 0, text};
    }
    // Entities of a document type can make a small file huge.
    if (document->intSubset != nullptr) throw Refusal{1, "GPX has no document type"};
    xmlNode* const root = xmlDocGetRootElement(document.get());
    if (!is_element(root, "gpx") || taken(xmlGetNoNsProp(root, xml("version"))) != "1.1")
        throw Refusal{xmlGetLineNo(root), "not GPX 1.1"};
    return document;
}

std::vector<GpxRoute> routes_of(const Document& document) {
    std::vector<GpxRoute> routes;
    for (xmlNode* const element : elements_of(xmlDocGetRootElement(document.get()), "rte")) {
        routes.push_back({name_of(element), {}});
        for (xmlNode* const point : elements_of(element, "rtept"))
            routes.back().waypoints.push_back(waypoint_of(point));
    }
    return routes;
}

void remove(xmlNode* node) {
    xmlUnlinkNode(node);
    xmlFreeNode(node);
}

xmlNode* made(xmlNode* node) {
    if (node == nullptr) throw std::bad_alloc();
    return node;
}

// The shortest decimal number that is read as the same double.
std::string decimal_text(double value) {
    char text[400];
    return {text, std::to_chars(text, text + sizeof text, value, std::chars_format::fixed).ptr};
}

void add_waypoint(xmlNode* route, const Waypoint& waypoint) {
    // GPX ends at, but does not include, 180 degrees east.
    const double longitude = std::remainder(waypoint.position.longitude, 360.0);
    xmlNode* const element = made(xmlNewChild(route, nullptr, xml("rtept"), nullptr));
    xmlNewProp(element, xml("lat"), xml(decimal_text(waypoint.position.latitude).c_str()));
    xmlNewProp(element, xml("lon"), xml(decimal_text(longitude == 180.0 ? -180.0 : longitude).c_str()));
    if (!waypoint.name.empty())
        made(xmlNewTextChild(element, nullptr, xml("name"), xml(waypoint.name.c_str())));
}

// Waypoints that did not change keep what else the file says of them.
void edit_route(xmlNode* element, const GpxRoute& route) {
    const auto key = [](const Waypoint& point) {
        return std::tuple(point.position.latitude, point.position.longitude, point.name);
    };
    if (name_of(element) != route.name) {
        for (xmlNode* const name : elements_of(element, "name"))
            remove(name);
        xmlNode* const first = element->children;
        xmlNode* const name = made(xmlNewTextChild(element, nullptr, xml("name"), xml(route.name.c_str())));
        if (first != nullptr) xmlAddPrevSibling(first, name);
    }
    std::multimap<decltype(key({})), xmlNode*> old_points;
    for (xmlNode* const point : elements_of(element, "rtept"))
        old_points.emplace(key(waypoint_of(point)), point);
    for (const Waypoint& waypoint : route.waypoints) {
        if (const auto old_point = old_points.extract(key(waypoint))) {
            xmlUnlinkNode(old_point.mapped());
            xmlAddChild(element, old_point.mapped());
        } else {
            add_waypoint(element, waypoint);
        }
    }
    for (const auto& [unused, point] : old_points)
        remove(point);
}

// Routes come before tracks and extensions.
xmlNode* add_route(xmlNode* root) {
    xmlNode* const route = made(xmlNewChild(root, nullptr, xml("rte"), nullptr));
    for (xmlNode* node = root->children; node != route; node = node->next) {
        if (is_element(node, "trk") || is_element(node, "extensions")) return xmlAddPrevSibling(node, route);
    }
    return route;
}

std::string edited(const Document& document, const std::vector<GpxRoute>& routes) {
    xmlNode* const root = xmlDocGetRootElement(document.get());
    const std::vector<xmlNode*> elements = elements_of(root, "rte");
    for (std::size_t i = 0; i < routes.size(); ++i)
        edit_route(i < elements.size() ? elements[i] : add_route(root), routes[i]);
    for (std::size_t i = routes.size(); i < elements.size(); ++i)
        remove(elements[i]);
    xmlChar* text = nullptr;
    int size = 0;
    xmlDocDumpFormatMemoryEnc(document.get(), &text, &size, "UTF-8", 1);
    return taken(text);
}

std::string text_of(const Refusal& refusal) {
    return (refusal.line > 0 ? ", line " + std::to_string(refusal.line) : "") + ": " + refusal.text;
}

}  // namespace

LoadedGpx load_gpx(const std::string& path) {
    try {
        return {routes_of(parse(bytes_of(path))), {}};
    } catch (const Refusal& refusal) {
        return {std::nullopt, path + text_of(refusal)};
    }
}

std::string save_gpx(const std::string& path, const std::vector<GpxRoute>& routes) {
    try {
        std::error_code ignored;
        const Document document = parse(fs::exists(path, ignored) ? bytes_of(path) : kNewFile);
        routes_of(document);  // refuses what load_gpx refuses
        const std::string text = edited(document, routes);
        routes_of(parse(text));  // what cannot be loaded again must not replace a file
        return save_file(path, text);
    } catch (const Refusal& refusal) {
        return "cannot save " + path + text_of(refusal);
    }
}

}  // namespace viewer
