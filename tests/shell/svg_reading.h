// Reading the plot's SVG in tests: a small check that it is well-formed XML, and the start
// tags of the elements of a class with their attributes.
#pragma once

#include <cctype>
#include <string>
#include <string_view>
#include <vector>

namespace titron::shell::testing {

// No '<', and every '&' begins one of XML's five entities or a character reference.
inline bool isCleanXmlText(std::string_view text) {
    if (text.find('<') != std::string_view::npos) {
        return false;
    }
    for (std::size_t at = text.find('&'); at != std::string_view::npos;
         at = text.find('&', at + 1)) {
        const std::string_view rest = text.substr(at);
        bool known = rest.starts_with("&#") && rest.find(';') != std::string_view::npos;
        for (const char* entity : {"&amp;", "&lt;", "&gt;", "&quot;", "&apos;"}) {
            known = known || rest.starts_with(entity);
        }
        if (!known) {
            return false;
        }
    }
    return true;
}

// One root element, tags that close in the order they opened, quoted attribute values, and
// text and values without raw markup characters.
inline bool isWellFormedXml(std::string_view xml) {
    std::vector<std::string_view> open;
    bool hadRoot = false;
    std::size_t i = 0;
    while (i < xml.size()) {
        const std::size_t lt = std::min(xml.find('<', i), xml.size());
        const std::string_view text = xml.substr(i, lt - i);
        const bool blank = text.find_first_not_of(" \t\r\n") == std::string_view::npos;
        if (!isCleanXmlText(text) || (open.empty() && !blank)) {
            return false;
        }
        if (lt == xml.size()) {
            break;
        }
        if (xml.substr(lt).starts_with("<?")) {
            i = xml.find("?>", lt);
            if (i == std::string_view::npos || hadRoot) {
                return false;
            }
            i += 2;
            continue;
        }
        // The tag's end: the first '>' outside a quoted value.
        std::size_t gt = lt + 1;
        char quote = 0;
        for (; gt < xml.size() && (quote != 0 || xml[gt] != '>'); ++gt) {
            if (quote == 0 && (xml[gt] == '"' || xml[gt] == '\'')) {
                quote = xml[gt];
            } else if (quote != 0 && xml[gt] == quote) {
                quote = 0;
            }
        }
        if (gt == xml.size()) {
            return false;
        }
        std::string_view tag = xml.substr(lt + 1, gt - lt - 1);
        i = gt + 1;
        if (tag.starts_with('/')) {
            if (open.empty() || open.back() != tag.substr(1)) {
                return false;
            }
            open.pop_back();
            continue;
        }
        const bool empty = tag.ends_with('/');
        if (empty) {
            tag.remove_suffix(1);
        }
        const std::string_view name = tag.substr(0, tag.find_first_of(" \t\r\n"));
        if (name.empty() || (open.empty() && hadRoot)) {
            return false;
        }
        // Attributes: name="value" or name='value', separated by blanks.
        for (std::size_t at = name.size(); at < tag.size();) {
            at = tag.find_first_not_of(" \t\r\n", at);
            if (at == std::string_view::npos) {
                break;
            }
            const std::size_t equals = tag.find('=', at);
            if (equals == std::string_view::npos || equals + 1 >= tag.size() ||
                (tag[equals + 1] != '"' && tag[equals + 1] != '\'')) {
                return false;
            }
            const std::size_t close = tag.find(tag[equals + 1], equals + 2);
            if (close == std::string_view::npos ||
                !isCleanXmlText(tag.substr(equals + 2, close - equals - 2))) {
                return false;
            }
            at = close + 1;
        }
        hadRoot = true;
        if (!empty) {
            open.push_back(name);
        }
    }
    return hadRoot && open.empty();
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
