#include "frame/Prompts.h"

#include "frame/HeadlessPrompts.h"

namespace Frame {

namespace {

Prompts*& Installed()
{
    static Prompts* installed = nullptr;
    return installed;
}

} // namespace

Prompts& CurrentPrompts()
{
    if (Installed() != nullptr)
        return *Installed();
    static HeadlessPrompts headless;
    return headless;
}

Prompts* InstallPrompts(Prompts* prompts)
{
    Prompts* previous = Installed();
    Installed() = prompts;
    return previous;
}

} // namespace Frame
