#pragma once
// The hourglass for the span of a long step. The core knows no widgets, so the
// desktop program installs the handler that sets and restores the pointer.

#include <functional>

namespace normaris {

class BusyCursor {
public:
    BusyCursor();
    ~BusyCursor();
    BusyCursor(const BusyCursor &) = delete;
    BusyCursor &operator=(const BusyCursor &) = delete;

    // Called with true when the first BusyCursor starts and false when the last one ends.
    static void setHandler(std::function<void(bool busy)> handler);
    static bool isBusy();

private:
    static int s_depth;
};

} // namespace normaris
