#include "viewer/gpx.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <new>
#include <stdexcept>
#include <system_error>
#include <tuple>

#include <libxml/parser.h>
#include <libxml/tree.h>

#include <viewer/files.h>
#include <zellap10/plotter/parse_position.h>

namespace viewer {

namespace fs = std::filesystem;

namespace {

constexpr char kNamespace[] = "http://www.topografix.com/GPX/1/1";
constexpr char kNewFile[] =
    "<gpx xmlns=\"http://www.topografix.com/GPX/1/1\" version=\"1.1\" creator=\"zellap10\"/>";
constexpr std::uintmax_t kMostBytes = 64 << 20;

using Document = std::unique_ptr<xmlDoc, void (*)(xmlDoc*)>;

// Of a file; its text follows the path.
class Refusal : public std::runtime_error {
public:
    Refusal(long line, const std::string& reason)
        : std::runtime_error((line > 0 ? ", line " + std::to_string(line) : "") + ": " + reason) {}
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
    const auto value = parse_decimal(text);
    if (value && std::fabs(*value) <= limit) return *value;
    const std::string limits = std::to_string(static_cast<int>(limit));
    throw Refusal(xmlGetLineNo(node),
                  std::string(attribute) + " must be a number from -" + limits + " to " + limits);
}

std::vector<xmlNode*> elements_of(const xmlNode* parent, const char* name) {
    std::vector<xmlNode*> elements;
    for (xmlNode* node = parent->children; node != nullptr; node = node->next) {
        if (is_element(node, name)) elements.push_back(node);
    }
    return elements;
}

Waypoint waypoint_of(xmlNode* element) {
    const auto names = elements_of(element, "name");
    return {{coordinate(element, "lat", 90.0), coordinate(element, "lon", 180.0)},
            names.empty() ? std::string() : taken(xmlNodeGetContent(names.front()))};
}

std::string bytes_of(const std::string& path) {
    std::error_code error;
    const std::uintmax_t size = fs::file_size(path, error);
    if (error) throw Refusal(0, error.message());
    if (size > kMostBytes) throw Refusal(0, "larger than 64 MiB");
    std::string bytes(static_cast<std::size_t>(size), '\0');
    std::ifstream file(path, std::ios::binary);
    if (!file.read(bytes.data(), static_cast<std::streamsize>(size))) throw Refusal(0, "cannot be read");
    return bytes;
}

Document parse(const std::string& bytes) {
    const std::unique_ptr<xmlParserCtxt, void (*)(xmlParserCtxt*)> context(xmlNewParserCtxt(),
                                                                           xmlFreeParserCtxt);
    if (context == nullptr) throw std::bad_alloc();
    constexpr int kOptions =
        XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_BIG_LINES | XML_PARSE_NOBLANKS;
    Document document(xmlCtxtReadMemory(context.get(), bytes.data(), static_cast<int>(bytes.size()), nullptr,
                                        nullptr, kOptions),
                      xmlFreeDoc);
    const auto* error = xmlCtxtGetLastError(context.get());
    if (document == nullptr || !context->nsWellFormed) {
        std::string text = error != nullptr && error->message != nullptr ? error->message : "no XML";
        text.erase(text.find_last_not_of('\n') + 1);
        throw Refusal(error != nullptr ? error->line : 0, text);
    }
    // Entities of a document type can make a small file huge.
    if (document->intSubset != nullptr) throw Refusal(1, "GPX has no document type");
    xmlNode* const root = xmlDocGetRootElement(document.get());
    if (!is_element(root, "gpx") || taken(xmlGetNoNsProp(root, xml("version"))) != "1.1")
        throw Refusal(xmlGetLineNo(root), "not GPX 1.1");
    return document;
}

// The first route, after all are checked.
LoadedGpx content_of(const Document& document) {
    LoadedGpx content;
    for (xmlNode* const route : elements_of(xmlDocGetRootElement(document.get()), "rte")) {
        for (xmlNode* const point : elements_of(route, "rtept")) {
            const Waypoint waypoint = waypoint_of(point);
            if (content.routes == 0) content.waypoints.push_back(waypoint);
        }
        ++content.routes;
    }
    return content;
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
void edit_route(xmlNode* route, const std::vector<Waypoint>& waypoints) {
    const auto key = [](const Waypoint& point) {
        return std::tuple(point.position.latitude, point.position.longitude, point.name);
    };
    std::multimap<decltype(key({})), xmlNode*> old_points;
    for (xmlNode* const point : elements_of(route, "rtept"))
        old_points.emplace(key(waypoint_of(point)), point);
    for (const Waypoint& waypoint : waypoints) {
        if (const auto old_point = old_points.extract(key(waypoint))) {
            xmlUnlinkNode(old_point.mapped());
            xmlAddChild(route, old_point.mapped());
        } else {
            add_waypoint(route, waypoint);
        }
    }
    for (const auto& [unused, point] : old_points) {
        xmlUnlinkNode(point);
        xmlFreeNode(point);
    }
}

// The first route, or a new one, which comes before tracks and extensions.
xmlNode* route_of(xmlNode* root) {
    const auto routes = elements_of(root, "rte");
    if (!routes.empty()) return routes.front();
    xmlNode* const route = made(xmlNewChild(root, nullptr, xml("rte"), nullptr));
    for (xmlNode* node = root->children; node != route; node = node->next) {
        if (is_element(node, "trk") || is_element(node, "extensions")) return xmlAddPrevSibling(node, route);
    }
    return route;
}

std::string text_of(const Document& document) {
    xmlChar* text = nullptr;
    int size = 0;
    xmlDocDumpFormatMemoryEnc(document.get(), &text, &size, "UTF-8", 1);
    return taken(text);
}

}  // namespace

LoadedGpx load_gpx(const std::string& path) {
    try {
        LoadedGpx content = content_of(parse(bytes_of(path)));
        if (content.routes == 0) content.reason = path + " has no route.";
        return content;
    } catch (const Refusal& refusal) {
        return {{}, 0, path + refusal.what()};
    }
}

std::string save_gpx(const std::string& path, const std::vector<Waypoint>& waypoints) {
    try {
        std::error_code ignored;
        const Document document = parse(fs::exists(path, ignored) ? bytes_of(path) : kNewFile);
        content_of(document);  // refuses what load_gpx refuses
        edit_route(route_of(xmlDocGetRootElement(document.get())), waypoints);
        const std::string text = text_of(document);
        content_of(parse(text));  // what cannot be loaded again must not replace a file
        return save_file(path, text);
    } catch (const Refusal& refusal) {
        return "cannot save " + path + refusal.what();
    }
}

}  // namespace viewer
