#ifdef VELMO_HAS_LINE_EDITOR

#include <histedit.h>

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <cwchar>
#include <utility>

#include "commands/Interruption.h"
#include "commands/Terminal.h"
#include "repl/LineReader.h"

namespace velmohost {
namespace {

constexpr int kHistoryLines = 1000;
constexpr wchar_t kKillLineKey = L'\x15';  // control-U

/// What all words begin with.
std::string CommonStart(const std::vector<std::string>& words) {
    std::string start = words.front();
    for (const std::string& word : words) {
        const auto [end, ignored] = std::mismatch(start.begin(), start.end(), word.begin(), word.end());
        start.erase(end, start.end());
    }
    return start;
}

/// A line edited with libedit. Its reading of single keys is replaced, so that what is due gets done in between.
class LineEditor : public LineReader {
public:
    explicit LineEditor(Interruption& interruptionOfInput)
        : interruption(interruptionOfInput),
          editor(el_init("velmohost", stdin, stdout, stderr)),
          lines(history_init()) {
        // The editor reads and counts characters by it. NOLINTNEXTLINE(concurrency-mt-unsafe): no object runs yet
        std::setlocale(LC_CTYPE, "");
        HistEvent event;
        history(lines, &event, H_SETSIZE, kHistoryLines);
        history(lines, &event, H_SETUNIQUE, 1);
        el_set(editor, EL_CLIENTDATA, this);
        el_set(editor, EL_PROMPT, &GivePrompt);
        el_set(editor, EL_EDITOR, "emacs");
        el_set(editor, EL_HIST, history, lines);
        el_set(editor, EL_GETCFN, &GiveKey);
        // By its wide names, of which the editor makes no copies that nobody frees.
        el_wset(editor, EL_ADDFN, L"velmo-complete", L"Complete the word before the cursor", &CompleteWord);
        el_set(editor, EL_BIND, "^I", "velmo-complete", nullptr);
        el_source(editor, nullptr);  // the user's own key bindings
    }
    ~LineEditor() override {
        el_end(editor);
        history_end(lines);
    }
    LineEditor(const LineEditor&) = delete;
    LineEditor& operator=(const LineEditor&) = delete;

    std::optional<std::string> ReadLine(PromptListener& promptListener) override {
        listener = &promptListener;
        el_resize(editor);
        el_set(editor, EL_PREP_TERM, 1);  // before the prompt: keys typed at it are the editor's, not the terminal's
        int count = 0;
        const char* const text = el_gets(editor, &count);
        listener = nullptr;
        if (text == nullptr || count <= 0) {
            std::fputs("\n", stdout);
            return std::nullopt;
        }
        std::string line(text, static_cast<std::size_t>(count));
        while (!line.empty() && (line.back() == '\n' || line.back() == '\r')) line.pop_back();
        Remember(line);
        return line;
    }

    void MakeRoom() override {
        if (listener == nullptr || isPromptAway) return;
        std::fputs("\r\x1b[K", stdout);
        isPromptAway = true;
    }

private:
    static LineEditor& Of(EditLine* editor) {
        void* self = nullptr;
        el_get(editor, EL_CLIENTDATA, &self);
        return *static_cast<LineEditor*>(self);
    }

    static char* GivePrompt(EditLine*) {
        static std::string prompt = kPrompt;
        return prompt.data();
    }

    /// @returns 1 for a key, 0 at the end of the input, -1 when it was interrupted
    static int GiveKey(EditLine* editor, wchar_t* key) {
        LineEditor& self = Of(editor);
        for (;;) {
            const auto limit = self.listener->DoWhatIsDue();
            if (std::exchange(self.isPromptAway, false)) el_set(editor, EL_REFRESH);
            if (self.interruption.Requested()) return -1;
            const bool hasKey = WaitForInput(limit);
            if (self.interruption.TakeBreak()) {  // it came before the key
                *key = kKillLineKey;
                return 1;
            }
            if (hasKey) return ReadKey(key);
        }
    }

    /// One character of the user's encoding; bytes that are none are passed over.
    static int ReadKey(wchar_t* key) {
        std::mbstate_t state{};
        for (char byte = 0; ReadInput(&byte, 1) == 1;) {
            // NOLINTNEXTLINE(concurrency-mt-unsafe): the state is a local one
            const std::size_t result = std::mbrtowc(key, &byte, 1, &state);
            if (result == static_cast<std::size_t>(-1)) state = {};
            if (result <= 1) return 1;
        }
        return 0;
    }

    static unsigned char CompleteWord(EditLine* editor, int) {
        const LineInfo* const line = el_line(editor);
        const std::string text(line->buffer, line->cursor);
        const std::size_t wordLength = text.size() - (text.find_last_of(" \t") + 1);
        const std::vector<std::string> words = Of(editor).listener->Complete(text);
        if (words.empty()) return CC_REFRESH_BEEP;
        const std::string missing = CommonStart(words).substr(wordLength) + (words.size() == 1 ? " " : "");
        if (!missing.empty()) return el_insertstr(editor, missing.c_str()) == 0 ? CC_REFRESH : CC_ERROR;
        std::fputs("\n", stdout);
        for (const std::string& word : words) std::fprintf(stdout, "%s  ", word.c_str());
        std::fputs("\n", stdout);
        return CC_REDISPLAY;
    }

    void Remember(const std::string& line) {
        if (line.find_first_not_of(" \t") == std::string::npos) return;
        HistEvent event;
        history(lines, &event, H_ENTER, line.c_str());
    }

    Interruption& interruption;
    EditLine* const editor;
    History* const lines;
    PromptListener* listener = nullptr;  // while a line is being read
    bool isPromptAway = false;
};

}  // namespace

std::unique_ptr<LineReader> CreateLineEditor(Interruption& interruption) {
    return std::make_unique<LineEditor>(interruption);
}

}  // namespace velmohost

#endif
