#include "platform/ProviderLibrary.h"

#include "platform/Err.h"
#include "platform/Platform.h"
#include "platform/WinSockCatalog.h"

#include <QFile>
#include <dlfcn.h>

namespace hv {

ProviderLibrary::ProviderLibrary() {
    const QString path = platform().Provider_Library_Path();
    if (!path.isEmpty())
        m_handle = dlopen(QFile::encodeName(path).constData(), RTLD_NOW | RTLD_LOCAL);
    if (!m_handle)
        Err().Raise(errnum::ErrorLoadingDll);
}

ProviderLibrary::~ProviderLibrary() {
    if (m_handle)
        dlclose(m_handle);
}

void* ProviderLibrary::Entry_Point(const char* name) {
    void* sym = dlsym(m_handle, name);
    if (!sym)
        Err().Raise(errnum::DllEntryPointNotFound);
    return sym;
}

// The library's own entry point runs first; the catalogue entry it stands for follows, kept by the platform
// (WinSockCatalog.h). A library that fails to load or lacks the entry point changes nothing.
int ProviderLibrary::Install_Provider_Call() {
    auto fn = reinterpret_cast<int (*)(int)>(Entry_Point("hvsock_ordinal_3"));
    const int result = fn(kProviderCallConstant);
    Add_Provider_Entry(platform().Registry_Root(), Catalog_Key(false));
    return result;
}

int ProviderLibrary::Uninstall_Provider_Call() {
    auto fn = reinterpret_cast<int (*)(int)>(Entry_Point("hvsock_ordinal_4"));
    const int result = fn(kProviderCallConstant);
    Remove_Provider_Entries(platform().Registry_Root(), Catalog_Key(false));
    return result;
}

void ProviderLibrary::Get_Blocked_Exe_Name(QByteArray& buffer255) {
    auto fn = reinterpret_cast<int (*)(char*)>(Entry_Point("hvsock_ordinal_19"));
    if (buffer255.size() > kNameBufferSize)
        buffer255.truncate(kNameBufferSize);
    buffer255 = buffer255.leftJustified(kNameBufferSize, ' ');
    // One spare byte behind the 255 so that a library writing its NUL at the very end stays inside.
    QByteArray work = buffer255;
    work.append('\0');
    fn(work.data());
    buffer255 = work.left(kNameBufferSize);
}

QString Text_Before_Nul(const QByteArray& buffer) {
    const qsizetype nul = buffer.indexOf('\0');
    return QString::fromLocal8Bit(nul < 0 ? buffer : buffer.left(nul));
}

} // namespace hv
