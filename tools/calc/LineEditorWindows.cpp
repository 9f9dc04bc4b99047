// LineEditorWindows.cpp - there is no line editor; the console's own does.
#include "tools/calc/LineEditor.h"

std::unique_ptr<LineReader> makeLineEditor(LineEditorHooks)
{
    return nullptr;
}
