// messages.cpp - takes the messages into the host's own hands, here into a list that it prints.
#include "mathexpr/CMathExpr.h"
#include "mathexpr/MessageDisplay.h"

#include <cstdint>
#include <iostream>
#include <string>
#include <vector>

struct MessageList
{
    std::vector<std::uint32_t> ids;

    static void show(void* context, std::uint32_t id, const wchar_t* text)
    {
        static_cast<MessageList*>(context)->ids.push_back(id);
        std::wcout << id << L": " << text << L'\n';
    }
};

int main()
{
    MessageList list;
    const MessageDisplay before = setMessageDisplay({MessageList::show, &list});

    CMathExpr calculator;
    VALTYPE value;
    const bool tooLarge = !calculator.Calculate(L"2*1000", value, 100);
    const bool unknown = !calculator.Calculate(L"2*nothing", value, 100);
    const bool good = calculator.Calculate(L"2*50", value, 100);
    std::wcout << list.ids.size() << L" messages, then " << value.x << L'\n';

    setMessageDisplay(before);
    return tooLarge && unknown && good ? 0 : 1;
}
