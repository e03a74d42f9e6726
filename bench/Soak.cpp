// Memory over very many lists: the documents of folders, all open in one process, asked in turn at
// carets drawn by chance, now and then with an unknown element, attribute or entity written, an item
// chosen, and all of it undone.
//
//     soak [--rounds N] FOLDER...
//
// Every round asks the same thousand lists, with unknown names of its own. The first one loads schemas
// and fills what is kept; buffers that are used again meet their largest text a few rounds later. After
// that nothing may grow. Prints the bytes in use (of the allocator, not of the system) at every tenth
// part; 1 if they have grown by 3 % since the first round or by 0.1 % since the middle.
#include <malloc.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

#include "bench/Session.h"

namespace caretwell::bench {
namespace {

constexpr int ListsOfRound = 1000;

std::vector<TDocument*> OpenFolder(TSession& session, const std::filesystem::path& folder) {
    std::vector<TDocument*> documents;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        constexpr uintmax_t largest = 200000;
        if (!entry.is_regular_file() || entry.file_size() > largest) continue;
        std::ifstream file(entry.path(), std::ios::binary);
        std::string text{std::istreambuf_iterator<char>(file), {}};
        TDocument& document = session.Open(std::move(text), entry.path().string(), 0);
        if (document.Driver().Manager()) documents.push_back(&document);
    }
    return documents;
}

class TSoak {
public:
    TSoak(TSession& session, std::vector<TDocument*> documents)
        : FSession(session), FDocuments(std::move(documents)) {}

    /// The bytes in use after round number `round`.
    size_t Round(int round) {
        FRandom.seed(7);
        char unknown[16];
        std::snprintf(unknown, sizeof unknown, "n%08d", round);
        for (int i = 0; i < ListsOfRound; ++i) AskOnce(*FDocuments[FRandom() % FDocuments.size()], unknown);
        return mallinfo2().uordblks;
    }

private:
    void AskOnce(TDocument& document, const std::string& unknown) {
        const std::string written[] = {"<" + unknown, "<p " + unknown + "=\"1\" ", "</" + unknown + ">",
                                       "&" + unknown, "<"};
        FSession.Host().Activate(document);
        document.View().SetCaretOffset(static_cast<int32_t>(FRandom() % (document.Text().Text().size() + 1)));
        TEditorDriver& driver = document.Driver();
        if (FRandom() % 4 == 0)
            for (char c : written[FRandom() % std::size(written)])
                driver.TypeChar(static_cast<unsigned char>(c));
        if (driver.OpenList()) {
            FUnits += ReadScreen(driver);
            if (FRandom() % 4 == 0) driver.PressKey(ekEnter);
        }
        driver.Dismiss();
        while (driver.Undo()) continue;
        FSession.Host().Messages().Clear();
    }

    TSession& FSession;
    std::vector<TDocument*> FDocuments;
    std::mt19937 FRandom;
    size_t FUnits = 0;
};

int Run(int rounds, const std::vector<std::string>& folders) {
    TSession session;
    std::vector<TDocument*> documents;
    for (const std::string& folder : folders) {
        auto found = OpenFolder(session, folder);
        documents.insert(documents.end(), found.begin(), found.end());
    }
    if (documents.empty()) {
        std::fputs("soak: no document\n", stderr);
        return 2;
    }
    TSoak soak(session, documents);
    size_t first = 0, middle = 0, last = 0;
    for (int round = 1; round <= rounds; ++round) {
        last = soak.Round(round);
        if (round == 1) first = last;
        if (round == (rounds + 1) / 2) middle = last;
        if (round != 1 && round % (std::max(rounds, 10) / 10) != 0) continue;
        std::printf("%8d lists in %zu documents %12zu bytes in use\n", round * ListsOfRound, documents.size(),
                    last);
        std::fflush(stdout);
    }
    auto over = [last](size_t before) { return static_cast<double>(last) / static_cast<double>(before); };
    std::printf("%.4f of the first %d, %.4f of the middle\n", over(first), ListsOfRound, over(middle));
    return over(first) > 1.03 || over(middle) > 1.001 ? 1 : 0;
}

}  // namespace
}  // namespace caretwell::bench

int main(int argc, char** argv) {
    int rounds = 200;
    std::vector<std::string> folders;
    for (int i = 1; i < argc; ++i) {
        if (std::string_view(argv[i]) == "--rounds" && i + 1 < argc)
            rounds = std::max(std::atoi(argv[++i]), 1);
        else folders.emplace_back(argv[i]);
    }
    return caretwell::bench::Run(rounds, folders);
}
