#include "DocumentType.h"

#include <cstddef>
#include <string>

using namespace std::string_view_literals;

namespace {

/// Stands for a letter of 16 bits that is not ASCII, though its bytes may look like it.
constexpr char kNoMarkup = '\x7F';

/// The text by its byte order mark, or by its first letter, without zeros. The markup of a prolog is ASCII.
class CProlog {
  public:
    explicit CProlog(std::string_view bytes) : m_rest(bytes) {
        const std::string_view start = bytes.substr(0, 2);
        m_highFirst = start == "\xFE\xFF"sv || start == "\0<"sv;
        m_wide = m_highFirst || start == "\xFF\xFE"sv || start == "<\0"sv;
    }

    /// False at the end.
    bool Next(char& c) {
        const std::size_t size = m_wide ? 2 : 1;
        while (m_rest.size() >= size) {
            c = m_rest[m_highFirst ? 1 : 0];
            if (m_wide && m_rest[m_highFirst ? 0 : 1] != '\0') c = kNoMarkup;
            m_rest.remove_prefix(size);
            if (c != '\0') return true;
        }
        return false;
    }
    bool SkipBehind(char wanted) {
        char c = 0;
        while (Next(c)) {
            if (c == wanted) return true;
        }
        return false;
    }
    bool SkipBehind(std::string_view end) {
        std::string last;
        char c = 0;
        while (Next(c)) {
            last += c;
            if (last.ends_with(end)) return true;
            if (last.size() > end.size()) last.erase(0, 1);
        }
        return false;
    }

  private:
    std::string_view m_rest;
    bool m_wide;
    bool m_highFirst;
};

}  // namespace

bool HasDocumentType(std::string_view bytes) {
    CProlog prolog(bytes);
    while (prolog.SkipBehind('<')) {
        char c = 0;
        if (!prolog.Next(c)) return false;
        if (c == '?') {
            if (!prolog.SkipBehind("?>")) return false;
            continue;
        }
        if (c != '!') return false;  // the root element
        if (!prolog.Next(c) || c != '-') return true;
        if (!prolog.Next(c) || !prolog.SkipBehind("-->")) return false;
    }
    return false;
}
