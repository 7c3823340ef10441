// A form: a top-level QWidget whose objectName is the form's name and whose title is its caption,
// with its controls (children named as the form names them), its Data controls and the lifecycle
// events Form_Initialize, Form_Load, Form_Activate, Form_QueryUnload, Form_Unload, Form_Resize.
// The close box runs Form_QueryUnload, whose default takes the form's exit handler while
// CloseGuard is true, so that the close box makes the same checks as "Kilépés".
#pragma once

#include <QWidget>
#include <string>
#include <vector>

#include "forms/runtime.h"

class QAction;
class QCheckBox;
class QComboBox;
class QDateEdit;
class QGroupBox;
class QLabel;
class QLineEdit;
class QMenu;
class QMenuBar;
class QLayout;
class QPushButton;
class QTextEdit;

namespace forms {

class DataControl;
class DBGrid;

class Form : public QWidget {
    Q_OBJECT
public:
    Form(std::string name, std::string caption);
    ~Form() override;

    const std::string& name() const { return name_; }
    std::string Caption() const;
    void setCaption(const std::string& caption);

    // True from Form_Initialize until the exit handler begins: the close box asks the exit handler.
    bool CloseGuard = false;

    // Loads the form without showing it (Form_Initialize once, Form_Load, the Data controls open).
    void Load();
    void Show(bool modal = false);
    void Hide();
    // Form_Unload, then the form leaves the screen; the next get() makes a fresh instance.
    void Unload();
    // The window's close box (UnloadMode 0).
    void closeBox();
    bool isLoaded() const { return loaded_; }
    bool isShown() const { return shown_; }

    // A control by its name (nullptr when none).
    template <class T = QWidget>
    T* control(const std::string& controlName) const {
        return findChild<T*>(QString::fromStdString(controlName));
    }
    QAction* action(const std::string& actionName) const;
    DataControl* dataControl(const std::string& dataName) const;
    const std::vector<DataControl*>& dataControls() const { return data_; }

    // The exit handler ("Kilépés"); public so that pickers and the runtime can take it.
    virtual void exitHandler();
    // Runs Form_Activate (the runtime calls it when the form becomes the active one).
    void activate();

protected:
    virtual void Form_Initialize();
    virtual void Form_Load() {}
    virtual void Form_Activate() {}
    virtual void Form_QueryUnload(bool& cancel, int unloadMode);
    virtual void Form_Unload(bool& cancel) {}
    virtual void Form_Resize() {}
    // A plain "Kilépés": CloseGuard off, so that the close box no longer asks, then Unload.
    void unloadUnguarded();

    // Building: every control is a child named as given.
    DataControl* data(const std::string& dataName, const std::string& databaseName, const std::string& recordSource);
    QLineEdit* textBox(const std::string& controlName, QWidget* parent = nullptr);
    QTextEdit* memoBox(const std::string& controlName, QWidget* parent = nullptr);
    QLabel* label(const std::string& controlName, const std::string& caption, QWidget* parent = nullptr);
    QPushButton* button(const std::string& controlName, const std::string& caption, QWidget* parent = nullptr);
    QCheckBox* checkBox(const std::string& controlName, const std::string& caption, QWidget* parent = nullptr);
    QComboBox* comboBox(const std::string& controlName, QWidget* parent = nullptr);
    QDateEdit* datePicker(const std::string& controlName, QWidget* parent = nullptr);
    QGroupBox* frame(const std::string& controlName, const std::string& caption, QWidget* parent = nullptr);
    DBGrid* grid(const std::string& controlName, QWidget* parent = nullptr);
    // The form's menu bar, above the form's outer layout.
    QMenuBar* menuBar(QLayout* outer);
    // A menu on the menu bar, named after its entry.
    QMenu* menu(QMenuBar* bar, const std::string& menuName, const std::string& caption);
    // A menu entry on a menu, or a top-level entry on a menu bar.
    QAction* menuItem(QWidget* menu, const std::string& actionName, const std::string& caption);

    void closeEvent(QCloseEvent* e) override;
    void resizeEvent(QResizeEvent* e) override;
    void changeEvent(QEvent* e) override;

private:
    friend void detail::showForm(Form&, bool);
    friend void detail::windowActivated(Form&);
    friend void detail::formHidden(Form&);
    friend void run(const std::function<void()>&);
    friend void resetRuntime();
    void openDataControls();

    std::string name_;
    std::vector<DataControl*> data_;
    bool initialized_ = false;
    bool loaded_ = false;
    bool shown_ = false;
    bool closingByRuntime_ = false;
};

// A form that only says it is not built yet (menu entries of modules still to come).
class StandInForm : public Form {
public:
    explicit StandInForm(const std::string& name);
};

}  // namespace forms
