#include "DocumentType.h"

#include <cstddef>
#include <string>

namespace {

/// The bytes without zeros: the markup of a prolog is ASCII, and so reads the same in 16 bits and in 8.
class CProlog {
  public:
    explicit CProlog(std::string_view bytes) : m_rest(bytes) {}

    /// False at the end.
    bool Next(char& c) {
        while (!m_rest.empty()) {
            c = m_rest.front();
            m_rest.remove_prefix(1);
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
