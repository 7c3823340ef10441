// The master of suppliers and partners (beraktar in Kerova.dsb): the country mark from the side
// grid of Orszagjel, two searches, the row lock test, and the full check of the names that both
// ways out offer, deliberately different: "Mégse" also deletes a null name, "Mentés-Kilépés" only
// the empty one. A partner that fails the check is deleted without a word.
#pragma once

#include "forms/recordform.h"

class QAction;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;

namespace forms {
class DBGrid;
}

namespace partners {

class BeraktarozokFormX : public forms::RecordForm {
public:
    BeraktarozokFormX();
    void exitHandler() override;

    forms::DataControl* Beraktarozok;
    forms::DataControl* Data1;
    forms::DataControl* Regisztralas;  // "Regisztrálás"
    QLineEdit *Text1, *Text2, *Text3, *Text4, *Text5, *Text6, *Text7, *Text8, *Text9, *Text10, *Text11, *Text12;
    QLabel* Label14;
    QProgressBar* ProgressBar1;
    forms::DBGrid* DBGrid1;
    forms::DBGrid* DBGrid2;
    QPushButton *keres, *Command1, *Command4, *megse;
    QAction *UjAdat, *BeszallTorol, *BeszNyom, *Kilepes;

    // The full check after its question: bad rows are deleted (under "Mégse" a null name too).
    void fullCheck(bool nullIsBad);

protected:
    void Form_Activate() override;

    void UjAdat_Click();
    void BeszallTorol_Click();
    void BeszNyom_Click();
    void Kilepes_Click();
    void megse_Click();
    void keres_Click();
    void Command1_Click();
    void Command4_Click();
    void DBGrid2_DblClick();
    void DBGrid1_HeadClick(int column);

private:
    void closeAndUnload();
    QLabel* logKey;  // the current key for the action log (not shown: Text1 shows it)
};

}  // namespace partners
