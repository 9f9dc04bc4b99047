// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// LineEditor.cpp - libedit with additional key bindings.
//
// libedit redraws the line if a key's function requests it, but not after a character at the end of the line. The
// signature is libedit's right-hand prompt. So every key that may change it requests a redraw: brackets, commas, cursor
// movements.
//
// A key's function that has work to do after the redraw pushes an internal key, whose function does the work.
#include "tools/calc/prompt/LineEditor.h"

#include "tools/calc/prompt/PromptHistory.h"
#include "tools/calc/terminal/Terminal.h"
#include "tools/calc/text/DisplayWidth.h"
#include "tools/calc/text/Utf8.h"

#include <algorithm>
#include <cerrno>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <limits>
#include <string>
#include <string_view>
#include <utility>

#include <histedit.h>
#include <langinfo.h>
#include <unistd.h>

namespace {

constexpr std::string_view promptText = "> ";
constexpr int historySize = 1000;

/// Columns that libedit needs between the line and the signature.
constexpr std::size_t gap = 2;

/// Longer lists are only counted, not shown.
constexpr std::size_t mostShown = 100;

/// Internal keys that functions push.
constexpr const char* endLineKey = "\r";
constexpr const char* showCandidatesKey = "\x1e";

/// Selects a UTF-8 locale, because libedit decodes characters by the locale. Thread-safe, since only the prompt runs.
// NOLINTBEGIN(concurrency-mt-unsafe)
void wantUtf8()
{
    std::setlocale(LC_CTYPE, "");
    if (std::string_view(nl_langinfo(CODESET)) != "UTF-8")
    {
        std::setlocale(LC_CTYPE, "C.UTF-8");
    }
}
// NOLINTEND(concurrency-mt-unsafe)

volatile std::sig_atomic_t isEditing = 0;

/// Erases the text after the cursor when the terminal is resized: libedit then assumes that the screen is empty, and
/// would leave that text on it. The next key redraws the line.
void eraseBehindCursor(int)
{
    constexpr std::string_view eraseBelow = "\033[J";
    const int error = errno;
    if (isEditing != 0 && write(STDOUT_FILENO, eraseBelow.data(), eraseBelow.size()) < 0)
    {
        isEditing = 0;  // the terminal is gone
    }
    errno = error;
}

/// libedit also handles the signal, and forwards it to this handler.
void noteResizing()
{
    struct sigaction action = {};
    action.sa_handler = eraseBehindCursor;
    sigaction(SIGWINCH, &action, nullptr);
}

std::string inColumns(const std::vector<std::string>& words, std::size_t columns)
{
    std::size_t widest = 0;
    for (const std::string& word : words)
    {
        widest = std::max(widest, displayWidth(word));
    }
    const std::size_t step = widest + 2;
    const std::size_t perLine = std::max<std::size_t>(1, (columns - 1) / step);
    std::string text;
    for (std::size_t index = 0; index < words.size(); ++index)
    {
        const bool isLast = (index + 1) % perLine == 0 || index + 1 == words.size();
        text += words[index] + (isLast ? "\n" : std::string(step - displayWidth(words[index]), ' '));
    }
    return text;
}

class LineEditor final : public LineReader
{
public:
    explicit LineEditor(LineEditorHooks givenHooks)
        : hooks(std::move(givenHooks)), file(PromptHistory::usualFile()), lines(history_init()),
          editor(el_init("mathexpr", stdin, stdout, stderr))
    {
        tellTrouble();
        HistEvent event;
        history(lines, &event, H_SETSIZE, historySize);
        history(lines, &event, H_SETUNIQUE, 1);
        for (const std::string& line : file.lines())
        {
            history(lines, &event, H_ENTER, line.c_str());
        }
        el_set(editor, EL_CLIENTDATA, this);
        el_set(editor, EL_SIGNAL, 1);
        el_set(editor, EL_HIST, history, lines);
        el_set(editor, EL_EDITOR, "emacs");
        el_source(editor, nullptr);  // the user's own key bindings
        el_set(editor, EL_PROMPT, leftPrompt);
        el_set(editor, EL_RPROMPT, rightPrompt);
        // Ctrl-C and Ctrl-Z are ordinary keys while a line is edited.
        el_set(editor, EL_SETTY, "-d", "-isig", nullptr);
        addKeys();
        noteResizing();
    }

    LineEditor(const LineEditor&) = delete;
    LineEditor& operator=(const LineEditor&) = delete;

    ~LineEditor() override
    {
        el_end(editor);
        history_end(lines);
    }

    std::optional<std::string> readLine() override
    {
        for (;;)
        {
            ending = Ending::None;
            el_set(editor, EL_PREP_TERM, 1);  // before the prompt, so that the terminal does not echo input that
                                              // arrives right after it
            int size = 0;
            isEditing = 1;
            const char* const read = el_gets(editor, &size);
            isEditing = 0;
            if (ending == Ending::Dropped)
            {
                continue;
            }
            std::string line = read == nullptr || size <= 0 ? cutShort() : read;
            if (line.ends_with('\n'))
            {
                line.pop_back();
            }
            else if (line.empty())
            {
                std::cout << std::endl;
                return std::nullopt;
            }
            remember(line);
            return line;
        }
    }

    void offer(const std::string& line) override
    {
        offered = line;
        if (!line.empty())
        {
            HistEvent event;
            history(lines, &event, H_ENTER, line.c_str());
        }
    }

private:
    enum class Ending
    {
        None,
        Entered,
        Dropped,
    };

    static LineEditor& self(EditLine* editor)
    {
        void* data = nullptr;
        el_get(editor, EL_CLIENTDATA, &data);
        return *static_cast<LineEditor*>(data);
    }

    /// The content of the line when the terminal disappears.
    std::string cutShort()
    {
        const LineInfo* const info = el_line(editor);
        return {info->buffer, info->lastchar};
    }

    std::string_view beforeCursor() const
    {
        const LineInfo* const info = el_line(editor);
        return {info->buffer, static_cast<std::size_t>(info->cursor - info->buffer)};
    }

    std::string_view afterCursor() const
    {
        const LineInfo* const info = el_line(editor);
        return {info->cursor, static_cast<std::size_t>(info->lastchar - info->cursor)};
    }

    void remember(const std::string& line)
    {
        if (line.find_first_not_of(' ') != std::string::npos)
        {
            HistEvent event;
            history(lines, &event, H_ENTER, line.c_str());
            file.add(line);
            tellTrouble();
        }
    }

    void tellTrouble()
    {
        const std::string trouble = file.takeTrouble();
        if (!trouble.empty())
        {
            std::cerr << "mathexpr: the history is not kept: " << trouble << std::endl;
        }
    }

    static char* leftPrompt(EditLine*)
    {
        static std::string text(promptText);
        return text.data();
    }

    static char* rightPrompt(EditLine* editor)
    {
        LineEditor& me = self(editor);
        me.shownSignature = me.ending == Ending::None ? me.signatureText() : std::string();
        return me.shownSignature.data();
    }

    /// As much of the signature as fits: all of it, its current parameter, or nothing.
    std::string signatureText()
    {
        const auto signature = hooks.signature(beforeCursor());
        if (!signature)
        {
            return {};
        }
        const std::string line = std::string(beforeCursor()) + std::string(afterCursor());
        const std::size_t taken = promptText.size() + displayWidth(printable(line)) + gap;
        const std::size_t columns = terminalColumns();
        const std::size_t room = columns > taken ? columns - taken : 0;
        const std::string current = signature->current.empty() ? "" : '<' + signature->current + '>';
        for (const std::string& text : {signature->before + current + signature->after, current})
        {
            if (displayWidth(text) <= room)
            {
                return text;
            }
        }
        return {};
    }

    /// libedit shows a control character in two columns, such as ^A.
    static std::string printable(const std::string& line)
    {
        std::string text;
        for (const char unit : line)
        {
            text += static_cast<unsigned char>(unit) < 0x20 ? "^A" : std::string(1, unit);
        }
        return toWide(text) ? text : std::string(text.size(), ' ');
    }

    void addKeys()
    {
        struct Key
        {
            const char* key;
            const char* function;
            unsigned char (*run)(EditLine*, int);
        };
        // clang-format off
        static constexpr Key keys[] = {
        //   key                 function                    what it does
        //   ------------------- --------------------------- ----------------
            {"^J",               "mathexpr-enter",           enter},
            {"^C",               "mathexpr-drop",            drop},
            {"^Z",               "mathexpr-suspend",         suspend},
            {"^I",               "mathexpr-complete",        completeKey},
            {showCandidatesKey,  "mathexpr-show-candidates", showCandidates},
            {"(",                "mathexpr-insert",          insert},
            {")",                "mathexpr-insert",          insert},
            {"[",                "mathexpr-insert",          insert},
            {"]",                "mathexpr-insert",          insert},
            {",",                "mathexpr-insert",          insert},
            {"^B",               "mathexpr-left",            goLeft},
            {"^F",               "mathexpr-right",           goRight},
            {"^A",               "mathexpr-begin",           goToBegin},
            {"^E",               "mathexpr-end",             goToEnd},
            {"\033[H",           "mathexpr-begin",           goToBegin},
            {"\033[F",           "mathexpr-end",             goToEnd},
            {"\033[1~",          "mathexpr-begin",           goToBegin},
            {"\033[4~",          "mathexpr-end",             goToEnd},
            {"\033[D",           "mathexpr-left",            goLeft},
            {"\033[C",           "mathexpr-right",           goRight},
            {"\033OD",           "mathexpr-left",            goLeft},
            {"\033OC",           "mathexpr-right",           goRight},
        };
        // clang-format on
        for (const Key& key : keys)
        {
            el_set(editor, EL_ADDFN, key.function, key.function, key.run);
            el_set(editor, EL_BIND, key.key, key.function, nullptr);
        }
        el_set(editor, EL_BIND, endLineKey, "ed-newline", nullptr);
    }

    /// Ends the line after a redraw that omits the signature.
    static unsigned char endLine(EditLine* editor, Ending ending)
    {
        self(editor).ending = ending;
        el_cursor(editor, std::numeric_limits<short>::max());
        el_push(editor, endLineKey);
        return CC_REFRESH;
    }

    static unsigned char enter(EditLine* editor, int) { return endLine(editor, Ending::Entered); }

    static unsigned char drop(EditLine* editor, int)
    {
        el_cursor(editor, std::numeric_limits<short>::max());
        el_insertstr(editor, "^C");
        return endLine(editor, Ending::Dropped);
    }

    /// libedit restores the terminal before the signal stops the program.
    static unsigned char suspend(EditLine*, int)
    {
        kill(getpid(), SIGTSTP);
        return CC_REFRESH;
    }

    static unsigned char insert(EditLine* editor, int key)
    {
        const char text[] = {static_cast<char>(key), '\0'};
        return el_insertstr(editor, text) == 0 ? CC_REFRESH : CC_ERROR;
    }

    static unsigned char goLeft(EditLine* editor, int) { return go(editor, -1); }
    static unsigned char goRight(EditLine* editor, int) { return go(editor, 1); }
    static unsigned char goToBegin(EditLine* editor, int) { return go(editor, std::numeric_limits<short>::min()); }
    static unsigned char goToEnd(EditLine* editor, int) { return go(editor, std::numeric_limits<short>::max()); }

    static unsigned char go(EditLine* editor, int characters)
    {
        el_cursor(editor, characters);
        return CC_REFRESH;
    }

    static unsigned char completeKey(EditLine* editor, int)
    {
        LineEditor& me = self(editor);
        if (me.beforeCursor().empty() && me.afterCursor().empty() && !me.offered.empty())
        {
            el_insertstr(editor, me.offered.c_str());
            return CC_REFRESH;
        }
        const Completion completion = me.hooks.complete(std::string(me.beforeCursor()), std::string(me.afterCursor()));
        const std::string common = commonBeginning(completion.candidates);
        const bool isChosen = completion.candidates.size() == 1;
        if (isChosen || common.size() > completion.replacedBefore)
        {
            me.replace(completion, common);
            return CC_REFRESH;
        }
        if (completion.candidates.empty())
        {
            return CC_ERROR;
        }
        me.candidates = completion.candidates;
        me.cursorFromEnd = charactersOf(me.afterCursor());
        el_cursor(editor, std::numeric_limits<short>::max());
        el_push(editor, showCandidatesKey);
        return CC_REFRESH;
    }

    /// Shows the candidates below the line, and redraws the line.
    static unsigned char showCandidates(EditLine* editor, int)
    {
        LineEditor& me = self(editor);
        if (me.candidates.empty())
        {
            return CC_ERROR;
        }
        const std::vector<std::string> shown = std::exchange(me.candidates, {});
        std::cout << '\n'
                  << (shown.size() > mostShown ? std::to_string(shown.size()) + " names: type a letter, or :list\n"
                                               : inColumns(shown, terminalColumns()))
                  << std::flush;
        el_cursor(editor, -me.cursorFromEnd);
        el_set(editor, EL_REFRESH);
        return CC_NORM;
    }

    void replace(const Completion& completion, const std::string& text)
    {
        const std::string_view before = beforeCursor();
        const int charactersBefore = charactersOf(before.substr(before.size() - completion.replacedBefore));
        const int charactersBehind = charactersOf(afterCursor().substr(0, completion.replacedBehind));
        el_cursor(editor, charactersBehind);
        el_deletestr(editor, charactersBefore + charactersBehind);
        el_insertstr(editor, text.c_str());
    }

    static int charactersOf(std::string_view utf8)
    {
        return static_cast<int>(
            std::ranges::count_if(utf8, [](char unit) { return (static_cast<unsigned char>(unit) & 0xC0) != 0x80; }));
    }

    LineEditorHooks hooks;
    PromptHistory file;
    History* lines;
    EditLine* editor;
    Ending ending = Ending::None;
    std::string shownSignature;
    std::string offered;
    std::vector<std::string> candidates;
    int cursorFromEnd = 0;
};

}

std::unique_ptr<LineReader> makeLineEditor(LineEditorHooks hooks)
{
    const char* const terminal = std::getenv("TERM");  // NOLINT(concurrency-mt-unsafe): nothing changes it
    if (terminal == nullptr || *terminal == '\0' || std::string_view(terminal) == "dumb")
    {
        return nullptr;
    }
    wantUtf8();
    return std::make_unique<LineEditor>(std::move(hooks));
}
