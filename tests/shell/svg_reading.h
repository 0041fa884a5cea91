// Reading the plot's SVG in tests: a small check that it is well-formed XML, and the start
// tags of the elements of a class with their attributes.
#pragma once

#include <algorithm>
#include <regex>
#include <string>
#include <string_view>
#include <vector>

namespace titron::shell::testing {

// Whether text may stand in XML content or a quoted value: no '<', and every '&' begins
// one of XML's five entities.
inline bool isCleanXmlText(std::string_view text) {
    static const std::regex unclean("<|&(?!(amp|lt|gt|quot|apos);)");
    return !std::regex_search(text.begin(), text.end(), unclean);
}

// Tags that close in the order they opened under one root element, attribute values in
// double quotes, no raw '<' or '&' in text and values, and no '>' in values (which XML
// would allow, but the plot escapes).
inline bool isWellFormedXml(std::string_view xml) {
    constexpr auto npos = std::string_view::npos;
    if (xml.starts_with("<?")) {
        xml.remove_prefix(xml.find("?>") + 2);
    }
    std::vector<std::string_view> open;
    int roots = 0;
    for (std::size_t at = 0;;) {
        const std::size_t lt = xml.find('<', at);
        const std::string_view text = xml.substr(at, lt == npos ? npos : lt - at);
        if (!isCleanXmlText(text) || (open.empty() && text.find_first_not_of(" \n") != npos)) {
            return false;
        }
        const std::size_t gt = xml.find('>', lt);
        if (lt == npos || gt == npos) {
            return lt == npos && roots == 1 && open.empty();
        }
        const std::string_view tag = xml.substr(lt + 1, gt - lt - 1);
        if (std::count(tag.begin(), tag.end(), '"') % 2 != 0 || !isCleanXmlText(tag)) {
            return false;
        }
        if (tag.starts_with('/')) {
            if (open.empty() || open.back() != tag.substr(1)) {
                return false;
            }
            open.pop_back();
        } else if (open.empty() && ++roots > 1) {
            return false;
        } else if (!tag.ends_with('/')) {
            open.push_back(tag.substr(0, tag.find(' ')));
        }
        at = gt + 1;
    }
}

// The start tags of the elements with this class, in document order.
inline std::vector<std::string> elements(const std::string& svg, const std::string& cls) {
    std::vector<std::string> tags;
    const std::string mark = " class=\"" + cls + "\"";
    for (std::size_t at = svg.find(mark); at != std::string::npos; at = svg.find(mark, at + 1)) {
        const std::size_t start = svg.rfind('<', at);
        tags.push_back(svg.substr(start + 1, svg.find('>', at) - start - 1));
    }
    return tags;
}

// The value of an attribute of a start tag; empty when it has none.
inline std::string attribute(const std::string& tag, const std::string& name) {
    const std::string mark = " " + name + "=\"";
    const std::size_t at = tag.find(mark);
    if (at == std::string::npos) {
        return {};
    }
    const std::size_t begin = at + mark.size();
    return tag.substr(begin, tag.find('"', begin) - begin);
}

} // namespace titron::shell::testing
