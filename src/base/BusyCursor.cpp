#include "base/BusyCursor.h"

namespace normaris {

namespace {
std::function<void(bool)> &handler()
{
    static std::function<void(bool)> h;
    return h;
}
} // namespace

int BusyCursor::s_depth = 0;

BusyCursor::BusyCursor()
{
    if (s_depth++ == 0 && handler())
        handler()(true);
}

BusyCursor::~BusyCursor()
{
    if (--s_depth == 0 && handler())
        handler()(false);
}

void BusyCursor::setHandler(std::function<void(bool)> h) { handler() = std::move(h); }

bool BusyCursor::isBusy() { return s_depth > 0; }

} // namespace normaris
