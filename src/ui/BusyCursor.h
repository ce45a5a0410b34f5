#pragma once
// The hourglass over the whole program while a long piece of work runs (a report of a million rows, its
// export, its delete); the cursor comes back when the holder goes, on every path. Holders nest.
//
// Work that shows a busy cursor also lets the window repaint now and then through the platform's
// event processing (Let_Paint), so the program never looks hung.
#include <QElapsedTimer>

namespace hv::ui {

class BusyCursor final {
public:
    BusyCursor();
    ~BusyCursor();
    BusyCursor(const BusyCursor&) = delete;
    BusyCursor& operator=(const BusyCursor&) = delete;

    // True while any holder exists; any thread may ask.
    static bool Active();
    // Called once per unit of work (a row). Every `every` units it looks at the clock, and when a tenth of
    // a second has passed since the work began or last let the window paint, the platform processes the
    // pending events: the window stays painted without the work paying for a repaint per row.
    void Let_Paint(int every = 4096);

    static constexpr qint64 kPaintIntervalMs = 100;

private:
    int m_units = 0;
    QElapsedTimer m_sincePaint;
};

} // namespace hv::ui
