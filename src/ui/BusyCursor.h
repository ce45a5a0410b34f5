#pragma once
// The hourglass over the whole program while a long piece of work runs (a report of a million rows, its
// export, its delete); the cursor comes back when the holder goes, on every path. Holders nest.
//
// Work that shows a busy cursor also lets the window repaint now and then through the platform's
// event processing (Let_Paint), so the program never looks hung.
namespace hv::ui {

class BusyCursor final {
public:
    BusyCursor();
    ~BusyCursor();
    BusyCursor(const BusyCursor&) = delete;
    BusyCursor& operator=(const BusyCursor&) = delete;

    // True while any holder exists.
    static bool Active();
    // Called once per unit of work (a row): every `every` units the platform processes pending events.
    void Let_Paint(int every = 65536);

private:
    int m_units = 0;
};

} // namespace hv::ui
