// Widget tests: a QApplication on the offscreen platform, scripted Dialogs, modal forms that
// return at once (or are driven by the test), and a company folder to work in.
#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAction>
#include <QLineEdit>
#include <QTest>
#include <filesystem>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "forms/dialogs.h"
#include "forms/form.h"
#include "forms/runtime.h"
#include "jet/support.h"
#include "vb/variant.h"

namespace kerova_test {

using testsupport::TempDir;

// A row's values by column name.
using Fields = std::vector<std::pair<std::string, vb::Variant>>;

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

    using Fields = kerova_test::Fields;
    // Rows written through the record layer, as another copy of the program writes them: one row,
    // or `count` rows in one batch where fields(i) gives row i (from 0).
    static void insert(const std::string& file, const std::string& table, const Fields& fields);
    static void insertMany(const std::string& file, const std::string& table, int count,
                           const std::function<Fields(int)>& fields);
    // The message boxes shown so far, in order (beeps and input boxes left out).
    std::vector<forms::ScriptedDialogs::Entry> messages() const;

    TempDir dir;
    forms::ScriptedDialogs* dialogs = nullptr;
};

}  // namespace kerova_test
