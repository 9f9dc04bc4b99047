// Terminal.h - whether a user sits at the other end.
#pragma once

bool standardInputIsTerminal();
bool standardErrorIsTerminal();
