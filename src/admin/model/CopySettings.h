#pragma once
// Copying one user's policy onto other users, feature by feature. A destination's data of a feature is
// replaced, never merged: its rows are deleted first, on a connection of their own, and then each list
// is written in one transaction on one connection. Nothing rolls back: a copy that fails midway leaves
// what was done, and the failure is reported by the store operation that met it.
//
// The operations need no page, so a tool without windows can use them as they stand.
#include <QString>
#include <QStringList>
#include <functional>
#include <vector>

namespace hv {

struct CopyContext {
    long computerId = 0;
    // Called every so many rows while a large list is written, so that a window stays painted.
    std::function<void()> breathe;
};

// A feature's copy from one user onto another. `sourceBit` is the source's state of the feature's bit,
// read once per feature by the caller. Every copy answers true, whatever its store calls met.
using CopyOperation = bool (*)(const CopyContext& ctx, long source, long destination, bool sourceBit);

struct CopyFeature {
    QString text;   // the item's text and key on the page, and what the copy dispatches on
    long sourceBit; // the FEATURE_BITS bit read from the source; 0: none is read
    CopyOperation copy;
    bool offered; // listed on the page; the device lock's copy is kept but not offered
};

// Every feature the copy knows, the offered ones in the page's order.
const std::vector<CopyFeature>& Copy_Features();
// The feature with this text, or null.
const CopyFeature* Find_Copy_Feature(const QString& text);

bool Copy_Website_Filter(const CopyContext& ctx, long source, long destination, bool sourceBit);
bool Copy_File_Filter(const CopyContext& ctx, long source, long destination, bool sourceBit);
bool Copy_SMTP_Filter(const CopyContext& ctx, long source, long destination, bool sourceBit);
bool Copy_POP3_Filter(const CopyContext& ctx, long source, long destination, bool sourceBit);
bool Copy_Port_Filter(const CopyContext& ctx, long source, long destination, bool sourceBit);
// The internet mode goes with the rows: the scheduler when the source's bit is on, else the source's
// manual ON or OFF.
bool Copy_Internet_Scheduler(const CopyContext& ctx, long source, long destination, bool sourceBit);
bool Copy_EXE_Blocker(const CopyContext& ctx, long source, long destination, bool sourceBit);
bool Copy_Window_Blocker(const CopyContext& ctx, long source, long destination, bool sourceBit);
// `sourceBit` is the source's application reporting bit (4096); the destination's scheduler bit (512) is
// set from it. Stores have always been written that way, and the enforcement side knows it so.
bool Copy_Application_Scheduler(const CopyContext& ctx, long source, long destination, bool sourceBit);
// The bypassed programs and the user's messages; the installation's client options and password are
// read and written back unchanged. No bit is touched.
bool Copy_General_Options(const CopyContext& ctx, long source, long destination);
bool Copy_Device_Settings(const CopyContext& ctx, long source, long destination);

// The copy of the ticked features (texts, in order) from the named source onto the named destinations
// (in order). Users are found by name at each use; the source's bit of a feature is read once for all
// destinations. The answer is that of the last copy. A user that cannot be found is reported by the
// look-up and nothing is written for it: a source not found copies nothing and answers false, a
// destination not found counts as a failed copy.
bool Copy_Settings(const CopyContext& ctx, const QString& sourceName, const QStringList& features,
                   const QStringList& destinations);

// A stored schedule time as a copied row holds it: read as a time of day and written back as 24-hour
// text with seconds ("8:05" gives "08:05:00", "8:05 PM" gives "20:05:00"). A text that is no time raises
// "Type mismatch" (13).
QString Copied_Time_Text(const QString& stored);

} // namespace hv
