#include "viewer/gpx.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <new>
#include <string_view>
#include <system_error>

#include <libxml/parser.h>
#include <libxml/xmlwriter.h>

#include <viewer/save_file.h>

namespace viewer {

namespace fs = std::filesystem;
using zellap10::plotter::Position;

namespace {

constexpr char kNamespace[] = "http://www.topografix.com/GPX/1/1";
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
using Buffer = std::unique_ptr<xmlBuffer, Freed<xmlBufferFree>>;
using Writer = std::unique_ptr<xmlTextWriter, Freed<xmlFreeTextWriter>>;

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

// A decimal number of XML Schema: no exponent, no infinity.
std::optional<double> decimal(std::string_view text) {
    constexpr char kBlanks[] = " \t\r\n";
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
    text = text.substr(0, text.find_last_not_of(kBlanks) + 1);
    if (!text.empty() && text[0] == '+') text.remove_prefix(1);
    if (text.find_first_not_of("-.0123456789") != std::string::npos) return std::nullopt;
    double value = 0.0;
    const auto read =
        std::from_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed);
    if (read.ec != std::errc() || read.ptr != text.data() + text.size()) return std::nullopt;
    return value;
}

double coordinate(xmlNode* node, const char* attribute, double limit) {
    const std::optional<double> value = decimal(taken(xmlGetNoNsProp(node, xml(attribute))));
    if (value && std::fabs(*value) <= limit) return *value;
    const std::string limits = std::to_string(static_cast<int>(limit));
    throw Refusal{xmlGetLineNo(node),
                  std::string(attribute) + " must be a number from -" + limits + " to " + limits};
}

std::string name_of(xmlNode* parent) {
    for (xmlNode* node = parent->children; node != nullptr; node = node->next) {
        if (is_element(node, "name")) return taken(xmlNodeGetContent(node));
    }
    return {};
}

GpxRoute route_of(xmlNode* element) {
    GpxRoute route{name_of(element), {}};
    for (xmlNode* node = element->children; node != nullptr; node = node->next) {
        if (!is_element(node, "rtept")) continue;
        const Position position{coordinate(node, "lat", 90.0), coordinate(node, "lon", 180.0)};
        route.waypoints.push_back({position, name_of(node)});
    }
    return route;
}

std::string bytes_of(const std::string& path) {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (!error && !fs::is_regular_file(status)) throw Refusal{0, "not a regular file"};
    const std::uintmax_t size = error ? 0 : fs::file_size(path, error);
    if (error) throw Refusal{0, error.message()};
    if (size > kMostBytes) throw Refusal{0, "larger than 64 MiB"};
    std::string bytes(static_cast<std::size_t>(size), '\0');
    std::ifstream file(path, std::ios::binary);
    file.read(bytes.data(), static_cast<std::streamsize>(size));
    if (!file) throw Refusal{0, "cannot be read"};
    return bytes;
}

Document parse(const std::string& bytes) {
    const Context context(xmlNewParserCtxt());
    if (context == nullptr) throw std::bad_alloc();
    constexpr int kOptions = XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_BIG_LINES;
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
    return document;
}

std::vector<GpxRoute> routes_of(const Document& document) {
    xmlNode* const root = xmlDocGetRootElement(document.get());
    if (!is_element(root, "gpx") || taken(xmlGetNoNsProp(root, xml("version"))) != "1.1")
        throw Refusal{xmlGetLineNo(root), "not GPX 1.1"};
    std::vector<GpxRoute> routes;
    for (xmlNode* node = root->children; node != nullptr; node = node->next) {
        if (is_element(node, "rte")) routes.push_back(route_of(node));
    }
    return routes;
}

// The shortest decimal number that is read as the same double.
std::string decimal_text(double value) {
    char text[400];
    return {text, std::to_chars(text, text + sizeof text, value, std::chars_format::fixed).ptr};
}

void write_name(xmlTextWriter* writer, const std::string& name) {
    if (!name.empty()) xmlTextWriterWriteElement(writer, xml("name"), xml(name.c_str()));
}

void write_route(xmlTextWriter* writer, const GpxRoute& route) {
    xmlTextWriterStartElement(writer, xml("rte"));
    write_name(writer, route.name);
    for (const auto& [position, name] : route.waypoints) {
        // GPX ends at, but does not include, 180 degrees east.
        const double longitude = std::remainder(position.longitude, 360.0);
        xmlTextWriterStartElement(writer, xml("rtept"));
        xmlTextWriterWriteAttribute(writer, xml("lat"), xml(decimal_text(position.latitude).c_str()));
        xmlTextWriterWriteAttribute(writer, xml("lon"),
                                    xml(decimal_text(longitude == 180.0 ? -180.0 : longitude).c_str()));
        write_name(writer, name);
        xmlTextWriterEndElement(writer);
    }
    xmlTextWriterEndElement(writer);
}

std::string gpx_of(const std::vector<GpxRoute>& routes) {
    const Buffer buffer(xmlBufferCreate());
    Writer writer(buffer != nullptr ? xmlNewTextWriterMemory(buffer.get(), 0) : nullptr);
    if (writer == nullptr) throw std::bad_alloc();
    xmlTextWriterSetIndent(writer.get(), 1);
    xmlTextWriterStartDocument(writer.get(), nullptr, "UTF-8", nullptr);
    xmlTextWriterStartElement(writer.get(), xml("gpx"));
    xmlTextWriterWriteAttribute(writer.get(), xml("xmlns"), xml(kNamespace));
    xmlTextWriterWriteAttribute(writer.get(), xml("version"), xml("1.1"));
    xmlTextWriterWriteAttribute(writer.get(), xml("creator"), xml("zellap10"));
    for (const GpxRoute& route : routes)
        write_route(writer.get(), route);
    if (xmlTextWriterEndDocument(writer.get()) < 0) throw std::bad_alloc();
    writer.reset();
    return reinterpret_cast<const char*>(xmlBufferContent(buffer.get()));
}

// Whether the texts survive; XML cannot contain control characters.
bool have_same_texts(const std::vector<GpxRoute>& a, const std::vector<GpxRoute>& b) {
    const auto same_name = [](const auto& left, const auto& right) { return left.name == right.name; };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [&](const GpxRoute& left, const GpxRoute& right) {
                          return same_name(left, right) &&
                                 std::equal(left.waypoints.begin(), left.waypoints.end(),
                                            right.waypoints.begin(), right.waypoints.end(), same_name);
                      });
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
    const std::string text = gpx_of(routes);
    try {
        // What cannot be loaded again must not replace a file.
        if (!have_same_texts(routes_of(parse(text)), routes)) throw Refusal{0, "a name is not valid text"};
    } catch (const Refusal& refusal) {
        return "cannot save " + path + text_of(refusal);
    }
    return save_file(path, text);
}

}  // namespace viewer
