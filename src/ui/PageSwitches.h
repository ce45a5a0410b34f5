#pragma once
// What every policy page does alike with its switches and its lists: the enable check box that asks and
// then writes its feature bit (the "DontSaveToDB" protocol for changes made by code), the controls that
// Remote Mode makes read-only, and the room a list column gives up for the scroll bar.
#include "ui/Controls.h"
#include "ui/ListView.h"

#include <initializer_list>

namespace hv {

// The room a list column gives up for a scroll bar, by the number of rows.
struct ColumnAllowance {
    ui::ListView* list = nullptr;
    int column = 1;
    int limit = 20;
    bool cumulative = false;

    static constexpr int kScrollBarTwips = 250;
    // The column gives up the scroll bar's room, or takes it back: for pages that count their rows
    // themselves.
    static void Give_Room(ui::ListView* list, int column = 1);
    // A list's only column as wide as the list less its 20-twip border, with no room given up.
    static void Fill_Width(ui::ListView* list);
    static void Take_Room_Back(ui::ListView* list, int column = 1);

    void After_Load() const;            // a list loaded with more than the limit
    void Before_Add(int rowsNow) const; // a row is about to go in
    void After_Remove() const;          // a row has just gone
};

namespace ui {

// Sets a check box from code without saving anything.
void Check_Silently(CheckBox* box, int value);
// The enable check box's click: ask, then set or clear the bit, or put the box back silently.
void Enable_Feature_Click(CheckBox* box, const QString& featureWords, long bit);
// Enabled unless the console runs in Remote Mode.
void Enable_Unless_Remote(std::initializer_list<QWidget*> controls);

} // namespace ui
} // namespace hv
