// The pattern of the three small masters (purposes, passengers, documents), written once: one
// source VezetoData on Kerova.dsb, the box Text1, today's date, the grid DBGrid1, "OK-Mentés", and
// the menus Frissites, UjAdat, Torl_s, Segedlet, Kilepes. GroupAttachmentForm adds the opening and
// the new row of the two forms kept per trip group.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "forms/recordform.h"

class QAction;
class QLabel;
class QLineEdit;
class QPushButton;

namespace trips {

class SmallMasterForm : public forms::RecordForm {
    Q_OBJECT
public:
    static constexpr const char* DeleteText = "Valóban véglegesen törli a kijelölt adatsort?";
    static constexpr const char* DeleteTitle = "FIGYELEM! Végleges törlés!";
    static constexpr const char* DeletedAll = "Minden adat törölve (Deleted All)! Kér új adatot (New)?";

    struct Design {
        const char* name;
        const char* title;
        const char* source;
        const char* textCaption;  // the caption beside Text1
        const char* textColumn;   // Text1's column, which the save finds again
        bool grouped;             // with the group label Label3
        const char* gridCaption;
        std::vector<std::pair<const char*, const char*>> gridColumns;  // heading, column
    };
    explicit SmallMasterForm(const Design& d);

    forms::DataControl* VezetoData;
    QLineEdit* Text1;
    QLabel* Label3 = nullptr;  // the group id, on the passenger and document forms only
    QLabel* TodayLabel;
    forms::DBGrid* DBGrid1;
    QPushButton* Command1;
    QAction *Frissites, *UjAdat, *Torl_s, *Segedlet, *Kilepes;

    void exitHandler() override { Kilepes_Click(); }

    void Command1_Click();
    void Frissites_Click();
    virtual void UjAdat_Click() = 0;
    void Torl_s_Click();
    void Segedlet_Click();
    void Kilepes_Click();

protected:
    void Form_Load() override;
    // Add, update, move last with the given columns; false when it failed.
    bool addRowWith(const std::vector<std::pair<std::string, vb::Variant>>& columns = {});
    void focusText1();

private:
    void deletedAll();
    std::string textColumn_;
};

class GroupAttachmentForm : public SmallMasterForm {
    Q_OBJECT
public:
    // The source on the group path, in both forms; the id is quoted with no escaping.
    static constexpr const char* GroupSource = "select * from UtakSzallitottSzemely where UtakCsoportAzonosito = '";
    static constexpr const char* NoGroupText = "Csoportazonosító nélkül nem lehet személyt felvinni!";
    static constexpr const char* NoGroupTitle = "FIGYELEM! Kezelői hiba! Válasszon utat először!";

    using SmallMasterForm::SmallMasterForm;
    void UjAdat_Click() override;

protected:
    void Form_Activate() override;
};

}  // namespace trips
