// LibraryMessages.cpp - records what the shared library shows: takes the place of the process's message display.
#include "mathexpr/MessageDisplay.h"
#include "tests/support/MessageRecorder.h"

struct MessageRecorder::Source
{
    explicit Source(MessageRecorder* recorder) : before(setMessageDisplay({&show, recorder})) {}
    Source(const Source&) = delete;
    Source& operator=(const Source&) = delete;
    ~Source() { setMessageDisplay(before); }

    static void show(void* recorder, std::uint32_t id, const wchar_t* text)
    {
        static_cast<MessageRecorder*>(recorder)->record(id, text);
    }

    MessageDisplay before;
};

MessageRecorder::MessageRecorder() : source(std::make_unique<Source>(this)) {}

MessageRecorder::~MessageRecorder() = default;
