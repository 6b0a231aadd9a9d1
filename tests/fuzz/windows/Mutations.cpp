// Stands in for the fuzzer where there is none: each file of the corpus once, then inputs made of them.
//   TARGETFuzz.exe CORPUS SECONDS FAULT     FAULT: the file that gets the input at which the process ended
#include <objbase.h>

#include <csignal>
#include <cstdio>
#include <random>

#include "fuzz/FuzzInput.h"
#include "support/FileSandbox.h"

namespace {

std::string g_input;
std::filesystem::path g_faultFile;

void EndWithFault() {
    std::ofstream(g_faultFile, std::ios::binary) << g_input;
    std::puts("a fault");
    std::fflush(stdout);
    ::TerminateProcess(::GetCurrentProcess(), 3);
}

LONG CALLBACK OnCrash(EXCEPTION_POINTERS* /*where*/) {
    EndWithFault();
    return EXCEPTION_EXECUTE_HANDLER;
}

void Try(const std::string& input) {
    g_input = input;
    TryInput(g_input);
}

class CMutations {
  public:
    CMutations(std::vector<std::string> corpus, unsigned seed)
        : m_corpus(std::move(corpus)), m_random(seed) {}

    std::string Next() {
        std::string input = Any();
        for (std::size_t left = Below(6) + 1; left > 0; --left) Change(input);
        return input;
    }

  private:
    std::size_t Below(std::size_t limit) { return limit == 0 ? 0 : m_random() % limit; }
    const std::string& Any() { return m_corpus[Below(m_corpus.size())]; }

    /// From one mark to another: what is cut and pasted by these is a document still, most of the time.
    std::string_view PieceOf(std::string_view text, char mark) {
        const std::size_t start = std::min(text.find(mark, Below(text.size())), text.size());
        std::size_t end = start;
        for (std::size_t marks = Below(3) + 1; marks > 0; --marks)
            end = std::min(text.find(mark, end + 1), text.size());
        return text.substr(start, end - start);
    }

    void Change(std::string& input) {
        if (Below(6) == 0 && !input.empty()) {
            input[Below(input.size())] = static_cast<char>(Below(256));
            return;
        }
        const char mark = "<<\"\" \n"[Below(6)];
        const std::string_view piece = PieceOf(input, mark);
        const std::string pieces[] = {
            "", {static_cast<char>(Below(256))}, std::string(piece), std::string(PieceOf(Any(), mark))};
        const auto start = static_cast<std::size_t>(piece.data() - input.data());
        input.replace(start, Below(2) * piece.size(), pieces[Below(4)]);
    }

    std::vector<std::string> m_corpus;
    std::mt19937 m_random;
};

}  // namespace

int wmain(int argc, wchar_t** argv) {
    if (argc != 4) return 2;
    g_faultFile = argv[3];
    ::SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
    ::SetUnhandledExceptionFilter(&OnCrash);
    std::signal(SIGABRT, [](int) { EndWithFault(); });
    ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);

    std::vector<std::string> corpus;
    for (const auto& entry : std::filesystem::directory_iterator(argv[1]))
        Try(corpus.emplace_back(support::BytesOf(entry.path())));
    const ULONGLONG end = ::GetTickCount64() + 1000 * std::stoull(argv[2]);
    std::size_t tried = corpus.size();
    CMutations mutations(std::move(corpus), std::random_device()());
    for (; ::GetTickCount64() < end; ++tried) Try(mutations.Next());
    std::printf("stat::number_of_executed_units: %zu\n", tried);
    return 0;
}
