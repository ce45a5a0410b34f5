// Fills the page kit's list view with 1,000,000 rows and, in the same run, a bare QTreeView over a minimal
// table model of the same strings. Each variant runs in a child process of its own so that its peak
// memory (VmHWM) is its own. The kit must stay within 1.5 times the reference's time and peak memory,
// both for a fill row by row (Add, as the pages load their lists) and in one go (Add_Many).
#include "BenchCommon.h"
#include "ui/ListView.h"

#include <QAbstractTableModel>
#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTreeView>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

constexpr int kRows = 1'000'000;
constexpr double kAllowance = 1.5;
constexpr int kRounds = 3;

class BareModel final : public QAbstractTableModel {
public:
    explicit BareModel(QStringList texts) : m_texts(std::move(texts)) {}
    int rowCount(const QModelIndex& parent) const override {
        return parent.isValid() ? 0 : int(m_texts.size());
    }
    int columnCount(const QModelIndex& parent) const override { return parent.isValid() ? 0 : 1; }
    QVariant data(const QModelIndex& index, int role) const override {
        return role == Qt::DisplayRole ? QVariant(m_texts.at(index.row())) : QVariant();
    }

private:
    QStringList m_texts;
};

QStringList Make_Texts() {
    return hv::bench::Numbered_Texts(kRows, QStringLiteral("www.example-site-%1.com"));
}

// Shows the view, lets it lay out and paint, and scrolls to the end and back as a user would.
void Settle(QWidget& top, QAbstractItemView& view) {
    top.resize(400, 500);
    top.show();
    QApplication::processEvents();
    view.scrollToBottom();
    QApplication::processEvents();
    view.scrollToTop();
    QApplication::processEvents();
}

enum Variant { Reference, KitAdd, KitAddMany };

// Runs one variant and returns milliseconds; the caller reads the peak afterwards. The strings exist
// before the clock starts, as the rows of a store's answer do; each list then takes them into storage
// of its own (the strings' data is shared, not copied) and is shown and scrolled.
double Run(Variant variant) {
    QStringList source = Make_Texts();
    QElapsedTimer clock;
    clock.start();
    if (variant == Reference) {
        QStringList own;
        for (const QString& t : source)
            own.append(t);
        source = QStringList();
        BareModel model(std::move(own));
        QTreeView view;
        view.setModel(&model);
        Settle(view, view);
        return double(clock.nsecsElapsed()) / 1e6;
    }
    hv::ui::ListView list(QStringLiteral("lvwBench"), hv::ui::ListView::Report, nullptr);
    list.Add_Column(QStringLiteral("Entry"), 5000);
    if (variant == KitAdd) {
        for (const QString& t : source)
            list.Add(t, QStringLiteral("Entry"));
    } else {
        list.Add_Many(source, QStringLiteral("Entry"));
    }
    source = QStringList();
    Settle(list, *list.View_Widget());
    const double ms = double(clock.nsecsElapsed()) / 1e6;
    if (list.Count() != kRows ||
        list.Text(kRows) != QStringLiteral("www.example-site-%1.com").arg(kRows - 1)) {
        std::fprintf(stderr, "the list does not hold the rows\n");
        std::exit(3);
    }
    return ms;
}

struct Result {
    double ms = 0;
    long peakKb = 0;
};

Result In_Child(Variant variant, int argc, char** argv) {
    return hv::bench::In_Child_Process(argc, argv, [variant] {
        Result r;
        r.ms = Run(variant);
        r.peakKb = hv::bench::Peak_Kb();
        return r;
    });
}

} // namespace

int main(int argc, char** argv) {
    if (!std::getenv("QT_QPA_PLATFORM"))
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
    // "bench_listview N" runs variant N alone in this process (for a profiler).
    if (argc == 2) {
        QApplication app(argc, argv);
        const double ms = Run(Variant(std::atoi(argv[1])));
        std::printf("variant %s: %.1f ms, peak %.1f MB\n", argv[1], ms, hv::bench::Peak_Kb() / 1024.0);
        return 0;
    }
    // The machine may be busy with other work: each variant runs a few times, interleaved, and its best
    // time counts (the peak is the same every time).
    Result ref, add, many;
    for (int round = 0; round < kRounds; ++round) {
        for (auto [variant, best] : {std::pair{Reference, &ref}, {KitAdd, &add}, {KitAddMany, &many}}) {
            const Result r = In_Child(variant, argc, argv);
            if (round == 0 || r.ms < best->ms)
                best->ms = r.ms;
            best->peakKb = std::max(best->peakKb, r.peakKb);
        }
    }
    std::printf("%-28s %10s %12s\n", "1,000,000 rows", "time (ms)", "peak (MB)");
    std::printf("%-28s %10.1f %12.1f\n", "bare QTreeView (reference)", ref.ms, ref.peakKb / 1024.0);
    std::printf("%-28s %10.1f %12.1f\n", "ListView, Add row by row", add.ms, add.peakKb / 1024.0);
    std::printf("%-28s %10.1f %12.1f\n", "ListView, Add_Many", many.ms, many.peakKb / 1024.0);
    bool ok = true;
    for (const Result* r : {&add, &many}) {
        if (r->ms > kAllowance * ref.ms || double(r->peakKb) > kAllowance * double(ref.peakKb))
            ok = false;
    }
    std::printf("%s (allowance %.1fx)\n", ok ? "PASS" : "FAIL", kAllowance);
    return ok ? 0 : 1;
}
