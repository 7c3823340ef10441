// ParameterFormX: the program's settings, each table in a grid of its own, edited in place: the
// warning days and kilometres, the folders of the sibling products, the units of quantity with the
// fixed one, and the fixed daily allowance. Its exit writes the values back into Globals.
#pragma once

#include "forms/recordform.h"

class QAction;
class QCheckBox;
class QGroupBox;
class QPushButton;

namespace app {

class ParameterFormX : public forms::RecordForm {
    Q_OBJECT
public:
    ParameterFormX();

    static constexpr const char* HelpTopic = "GkParameterFormX";
    static constexpr const char* WarningGridCaption =
        "A táblázatban adja meg, hogy hány nappal vagy kilométerrel előre kapjon figyelmeztetést!";
    static constexpr const char* PathGridCaption = "A táblázatban adja meg a pontos elérési útvonalakat (Path)!";
    static constexpr const char* UnitGridCaption = "Mennyiségi egységek";
    static constexpr const char* AllowanceGridCaption = "Állandó napidíj és pénzneme";

    forms::DataControl *ParameterData, *PathData, *MennyData, *EgyebData;
    forms::DBGrid *DBGrid1, *DBGrid2, *DBGrid3, *DBGrid4;
    QGroupBox *Frame1, *Frame2, *Frame3, *Frame4;
    QCheckBox* Check1;
    QPushButton *Command1, *Command2, *Command3, *Command4;
    QAction* Kilepes;

    void exitHandler() override { Kilepes_Click(); }

protected:
    void Form_Activate() override;

private:
    void Command1_Click();
    void Kilepes_Click();
};

}  // namespace app
