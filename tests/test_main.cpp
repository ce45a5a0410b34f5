// The test program's entry: one application object for all suites (the page kit's widgets need it),
// headless unless the caller chose a platform. It is the console's own, the last error target of events.
#include "ui/Application.h"

#include <cstdlib>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    if (!std::getenv("QT_QPA_PLATFORM"))
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
    hv::ui::Application app(argc, argv);
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
