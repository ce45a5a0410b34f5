#pragma once
// Browse for programs, as the EXE blocker and the bypass list of the internet settings do it: the open
// dialog set up for EXE files with several files allowed, each chosen file's name as the filter provider
// library gives it, and names the list already shows passed over without a word.
#include "store/modDB.h"
#include "ui/CommonDialog.h"

#include <QStringList>
#include <functional>

namespace hv::ui {

class ListView;

// The full paths of what the dialog's FileName holds: one full path, or a folder and the names in it
// separated by NULs. The folder and a name are joined with this platform's separator; the provider
// library takes the name after the last separator of either kind.
QStringList Chosen_Paths(const QString& fileName);

// Shows the dialog; a Cancel ends here with the batch unopened. Otherwise opens the batch and hands each
// chosen program's name that `list` does not show yet to `add`, which writes it and adds the row. The
// library is loaded at the first file, as a declared library is, so a missing one raises its run-time
// failure there.
void Browse_For_Exes(CommonDialog& dialog, StoreBatch& batch, const ListView& list,
                     const std::function<void(const QString& name)>& add);

} // namespace hv::ui
