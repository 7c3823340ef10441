// Widget tests: a QApplication on the offscreen platform, scripted Dialogs, modal forms that
// return at once (or are driven by the test), and a company folder to work in.
#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAction>
#include <QLineEdit>
#include <QTest>
#include <filesystem>
#include <string>

#include "forms/dialogs.h"
#include "forms/form.h"
#include "forms/runtime.h"
#include "jet/support.h"

namespace kerova_test {

using testsupport::TempDir;

// Saves what the screen shows (or the widget's own picture) as KEROVA_SHOTS/NAME.png, once the
// window has settled (screenshot tests, for a person to look at).
void shoot(QWidget& w, const std::string& name);

class GuiTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    // Makes the folder a company: every database of the catalogue, empty ("init"), or the demo.
    void initCompany();
    void demoCompany();

    // The loaded form of that name (fails the test when none).
    forms::Form& form(const std::string& name);
    // Clicks a button or triggers a menu entry of a form by name.
    void click(forms::Form& f, const std::string& control);
    // Types into a text box as a user would (key events: KeyPress filters apply).
    void type(forms::Form& f, const std::string& control, const std::string& text);
    // Moves the focus to a control (GotFocus / LostFocus fire).
    void focus(forms::Form& f, const std::string& control);
    std::string textOf(forms::Form& f, const std::string& control);

    TempDir dir;
    forms::ScriptedDialogs* dialogs = nullptr;
};

}  // namespace kerova_test
