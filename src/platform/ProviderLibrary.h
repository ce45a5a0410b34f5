#pragma once
// The filter provider library ("hvsock.dll"; here a shared object), reached by its ordinals: 3 installs
// the provider, 4 removes it, 19 turns a program's full path into the name it is blocked by.
//
// Loading follows the run time's rules for a declared library: a library that cannot be loaded raises
// "Error in loading DLL" (48), an entry point that is not there raises "Can't find DLL entry point" (453).
#include <QByteArray>
#include <QString>

namespace hv {

class ProviderLibrary final {
public:
    // Loads the library at platform().Provider_Library_Path(); raises 48 when it cannot be loaded.
    ProviderLibrary();
    ~ProviderLibrary();
    ProviderLibrary(const ProviderLibrary&) = delete;
    ProviderLibrary& operator=(const ProviderLibrary&) = delete;

    // The one constant the library expects from its install and remove calls.
    static constexpr int kProviderCallConstant = -1;

    // Ordinals 3 and 4: the provider's entry in the 32-bit WinSock catalogue is added / removed.
    int Install_Provider_Call();
    int Uninstall_Provider_Call();
    // Ordinal 19. The buffer holds a full path; it is padded with blanks (or cut) to 255 bytes before the
    // call, and holds the library's answer afterwards, NUL-terminated within the 255 bytes.
    void Get_Blocked_Exe_Name(QByteArray& buffer255);

    static constexpr int kNameBufferSize = 255;

private:
    void* Entry_Point(const char* name);
    void* m_handle = nullptr;
};

// The text up to the first NUL of a buffer that Get_Blocked_Exe_Name filled.
QString Text_Before_Nul(const QByteArray& buffer);

} // namespace hv
