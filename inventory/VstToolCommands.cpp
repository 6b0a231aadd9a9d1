#include "VstToolCommands.h"

namespace {

constexpr wchar_t kBlanks[] = L" \t";

std::wstring KeyArgument(const VstKey& key) {
    return (key.given ? L"/VSTRegPerUser/VSTRegKey:\"" : L"VSTRegKey:\"") + key.path + L"\"";
}

bool HasExtension(const std::wstring& path) {
    const auto mark = path.find_last_of(L".\\/");
    return mark != std::wstring::npos && path[mark] == L'.';
}

}  // namespace

std::wstring ArgumentsOf(const VstToolAction& action, const std::wstring& clsid, const VstKey& key) {
    std::wstring arguments = action.arguments;
    if (action.namesPlugin) arguments += clsid;
    if (action.program != VstProgram::Scanner) return arguments;
    // Only a scan gets a blank here. The scanner tells its other switches from the key's by the word
    // "VSTRegKey:" itself, so that they run together.
    if (arguments.empty()) arguments = L" ";
    return arguments + KeyArgument(key);
}

std::vector<std::wstring> ProgramsOnTheWay(const std::wstring& program) {
    std::vector<std::wstring> candidates;
    const auto last = program.find_last_not_of(kBlanks);
    if (last == std::wstring::npos || program.front() == L'"') return candidates;
    for (auto blank = program.find_first_of(kBlanks, 1); blank < last;
         blank = program.find_first_of(kBlanks, blank + 1)) {
        const std::wstring candidate = program.substr(0, blank);
        candidates.push_back(candidate);
        if (!HasExtension(candidate)) candidates.push_back(candidate + L".exe");
    }
    return candidates;
}
