// The provider's health check: which registration is missing decides the result, and the result the text.
#include "console/modProviders.h"
#include "platform/Registry.h"
#include "platform/WinSockCatalog.h"
#include "testing/ScriptedPlatform.h"

#include <gtest/gtest.h>

namespace {

using namespace hv;

TEST(ProviderHealth, TheFirstMissingRegistrationDecides) {
    const struct {
        const char* what;
        bool wow64, in32, in64;
        const char* appInit; // null: no value
        long result;
    } cases[] = {
        // clang-format off
        {"all there, 32-bit system", false, true, false, "hvsock.dll", 0},
        {"all there, 64-bit system", true, true, true, "other.dll,HvSock.DLL", 0},
        {"32-bit catalogue first", true, false, false, nullptr, 1},
        {"64-bit catalogue on a 64-bit system", true, true, false, "hvsock.dll", 2},
        {"AppInit empty", true, true, true, "", 3},
        {"AppInit missing", false, true, false, nullptr, 3},
        {"AppInit another library", false, true, true, "other.dll", 3},
    }; // clang-format on
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        ScriptedPlatform world;
        PlatformScope scope{world};
        world.wow64 = c.wow64;
        Registry& reg = world.Registry_Root();
        if (c.in32)
            Add_Provider_Entry(reg, Catalog_Key(false));
        if (c.in64)
            Add_Provider_Entry(reg, Catalog_Key(true));
        if (c.appInit)
            reg.Set_String(QLatin1String(kAppInitKey), QStringLiteral("AppInit_DLLs"),
                           QLatin1String(c.appInit));
        EXPECT_EQ(Check_Filters_Installed(), c.result);
    }
}

// The texts of 0, 1 and 3 are walked word for word by the provider health scenario.
TEST(ProviderHealth, EachResultHasItsText) {
    const QString tail = QStringLiteral(" applications not installed properly! Consider re-installing from "
                                        "'Files->Register All Filters' menu!");
    const struct {
        long result;
        QString text;
        bool box;
    } cases[] = {
        {-1, QStringLiteral("Error while checking for installation of filters!"), false},
        {0, QStringLiteral("Filters are properly installed."), false},
        {2, "Internet filter for 32-bit" + tail, true},
        {4, "Application filter for 64-bit" + tail, true},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Filter_Health_Report(c.result).text, c.text) << c.result;
        EXPECT_EQ(Filter_Health_Report(c.result).showBox, c.box) << c.result;
    }
}

} // namespace
