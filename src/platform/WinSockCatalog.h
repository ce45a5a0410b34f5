#pragma once
// The WinSock catalogue as this platform keeps it: below the catalogue key of the registry stand-in, one
// numbered key a provider entry ("000000000001"), each holding its "PackedCatalogItem". The item starts
// with the provider library's path in ANSI characters, padded with NULs to MAX_PATH, and goes on with the
// provider's description, as the system packs it.
//
// On Windows the provider library's install and remove entry points write these entries through the
// system; here there is no system catalogue for them to write into, so the platform keeps the entries on
// their behalf.
#include <QByteArray>
#include <QString>

namespace hv {

class Registry;

// The 32-bit catalogue; with wide64, the 64-bit one (the same path followed by "64").
QString Catalog_Key(bool wide64);

// The item an entry of the filter provider packs: its library path as the installed system names it.
QByteArray Provider_Catalog_Item();

// Adds an entry for the filter provider to the catalogue unless one already names its library, as a
// second install of the same provider replaces the first.
void Add_Provider_Entry(Registry& reg, const QString& catalogKey);
// Removes every entry whose item names the filter provider's library (in any case).
void Remove_Provider_Entries(Registry& reg, const QString& catalogKey);
// Whether an entry's item names the filter provider's library, in any case. A value written as a text
// (as a hand-made entry may be) is read as its characters' bytes.
bool Entry_Names_Provider(Registry& reg, const QString& entryKey);

inline const char* const kProviderLibraryName = "hvsock.dll";

} // namespace hv
