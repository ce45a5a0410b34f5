#pragma once
// The hourglass over the whole program for as long as long work runs; it goes when the work ends,
// however it ends. Nested uses stack.
namespace hv::ui {

class BusyCursor final {
public:
    BusyCursor();
    ~BusyCursor();
    BusyCursor(const BusyCursor&) = delete;
    BusyCursor& operator=(const BusyCursor&) = delete;
};

} // namespace hv::ui
