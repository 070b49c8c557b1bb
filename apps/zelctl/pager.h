#pragma once

#include "command.h"

#include <cstdio>

/// Shows the standard output page by page while it lives, by the program that the environment
/// variable PAGER names, or by less. Without a terminal, with an empty PAGER or without less it
/// changes nothing.
class Pager
{
public:
    Pager();
    ~Pager() { end(); }
    Q_DISABLE_COPY(Pager)

    /// Waits until the user has left the pager. Failed if it could not be started.
    ExitStatus end();

private:
    FILE* m_pipe = nullptr;
    int m_terminal = -1;
};
