#include "ui/ExeBrowse.h"

#include "platform/Err.h"
#include "platform/ProviderLibrary.h"
#include "ui/ListView.h"

#include <memory>

namespace hv::ui {

QStringList Chosen_Paths(const QString& fileName) {
    const QStringList parts = fileName.split(QChar(0));
    if (parts.size() == 1)
        return parts;
    QStringList paths;
    for (qsizetype i = 1; i < parts.size(); ++i)
        paths << parts[0] + u'/' + parts[i];
    return paths;
}

void Browse_For_Exes(CommonDialog& dialog, StoreBatch& batch, const ListView& list,
                     const std::function<void(const QString& name)>& add) {
    dialog.FileName = QString();
    dialog.DialogTitle = QStringLiteral("Browse for EXE files");
    dialog.Filter = QStringLiteral("Exe files|*.exe");
    dialog.Flags = CommonDialog::cdlOFNExplorer | CommonDialog::cdlOFNAllowMultiselect;
    dialog.MaxFileSize = 32767;
    dialog.ShowOpen();
    // The name was cleared, so a Cancel ends here.
    if (dialog.FileName.isEmpty())
        return;

    batch.Open();
    std::unique_ptr<ProviderLibrary> provider;
    for (const QString& path : Chosen_Paths(dialog.FileName)) {
        QByteArray buffer = path.toLocal8Bit().left(ProviderLibrary::kNameBufferSize);
        if (!provider)
            provider = std::make_unique<ProviderLibrary>();
        provider->Get_Blocked_Exe_Name(buffer);
        if (buffer.indexOf('\0') < 0)
            Err().Raise(errnum::InvalidProcedureCall);
        const QString name = Text_Before_Nul(buffer);
        if (Is_Text_In_ListView(name, list))
            continue;
        add(name);
    }
}

} // namespace hv::ui
