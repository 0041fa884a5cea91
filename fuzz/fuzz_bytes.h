// Takes a fuzzer's bytes apart: leading bytes as choices, the rest as texts.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace titron::fuzz {

class FuzzBytes {
  public:
    explicit FuzzBytes(std::string_view bytes) : m_rest(bytes) {}

    // The next byte as a choice, 0 when the bytes are used up.
    std::uint8_t byte() {
        if (m_rest.empty()) {
            return 0;
        }
        const auto b = static_cast<std::uint8_t>(m_rest.front());
        m_rest.remove_prefix(1);
        return b;
    }
    // The text up to the next separator byte (not included), or all that is left.
    std::string_view textUpTo(char separator) {
        const std::size_t end = m_rest.find(separator);
        const std::string_view text = m_rest.substr(0, end);
        m_rest.remove_prefix(end == std::string_view::npos ? m_rest.size() : end + 1);
        return text;
    }
    std::string_view rest() const { return m_rest; }
    bool empty() const { return m_rest.empty(); }

  private:
    std::string_view m_rest;
};

} // namespace titron::fuzz
