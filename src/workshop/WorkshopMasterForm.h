// The one design of the three small workshop masters (mechanics, jobs, parts): a list with a quick
// search, a row of buttons and one pick button. What differs between them is a Master description.
#pragma once

#include <string>
#include <vector>

#include "forms/recordform.h"

class QAction;
class QFormLayout;
class QLabel;
class QLineEdit;
class QPushButton;

namespace forms {
class DBGrid;
}

namespace workshop {

inline constexpr const char* EmptyText = "Nincs még adat! Visz fel most új adatot?";
inline constexpr const char* EmptyTitle = "FIGYELEM!";
inline constexpr const char* DeleteText = "Biztosan véglegesen törli az adatsort (Delete)?";
inline constexpr const char* DeleteTitle = "FIGYELEM! TÖRLÉS!";
inline constexpr const char* AllDeletedText = "Minden adat törölve (Deleted All)! Kér új adatot (New)?";
inline constexpr const char* AllDeletedTitle = "FIGYELEM!";

struct Master {
    struct Column {
        std::string caption;
        std::string field;
        int width = 0;
    };
    std::string name;            // the form's name, also its CurrentFormName
    std::string title;           // window title
    std::string table;           // its own table in Kerova.dsb
    std::string nameField;       // Text2's column
    std::string codeField;       // the second field's column
    bool codeInTextBox = false;  // Text3 (mechanics) or Label4
    std::string nameCaption, codeCaption;
    std::vector<Column> columns;  // the list
    std::string searchKey, exactSearchKey;
    std::string logOpen, logNew, logPick, logDelete;
    std::string printTitle;            // today's date goes behind it
    std::string printForm;             // the page form of the printed list
    std::vector<Column> printColumns;  // the printed list (width: share of the line)
};

class WorkshopMasterForm : public forms::RecordForm {
public:
    explicit WorkshopMasterForm(Master m);
    void exitHandler() override;
    const Master& master() const { return master_; }

    forms::DataControl* NyelvData;
    forms::DataControl* RegisztData;
    QLineEdit* Text1;
    QLabel* Label1;
    QLabel* Label2;
    QLineEdit* Text2;
    QLabel* Label3;
    QWidget* secondField;  // Text3 or Label4
    forms::DBGrid* DBGrid1;
    QPushButton* Command1;
    QPushButton* Command2;
    QPushButton* Command3;
    QAction* Mentes;
    QAction* Nyomtat;
    QAction* Segedlet;
    QAction* Kilepes;

protected:
    void Form_Activate() override;
    // Writes what a pick leaves into the shared slots.
    virtual void handOver() = 0;
    // The current row's value of a column as text ("" for null or no row).
    std::string current(const std::string& field);
    // The rows of captioned fields (a form adds its own below the shared two).
    QFormLayout* fields = nullptr;

    void Command1_Click();
    void Command2_Click();
    void Command3_Click();
    void Mentes_Click();
    void Text1_Change();
    void Nyomtat_Click();
    void Segedlet_Click();
    void Kilepes_Click();
    void DBGrid1_HeadClick(int column);

private:
    void allDeleted();
    void log(const std::string& action);
    Master master_;
};

}  // namespace workshop
