// The customer master ("CRM alap"): Címzett in kitarol.mdb with the countries of Orszagjel beside
// it; filters, search as you type, the copy of a row, two deletions, the hand-over of a customer
// to a caller (AtadaS), the closing check of the names and the printed list.
#pragma once

#include "forms/recordform.h"

class QAction;
class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace forms {
class DBGrid;
}

namespace partners {

class CimzettForm : public forms::RecordForm {
public:
    CimzettForm();
    void exitHandler() override;

    forms::DataControl* CimzettData;
    forms::DataControl* OrszagjelData;
    forms::DataControl* RegisztData;
    QLineEdit *Text1, *Text2, *Text3, *Text4, *Text5, *Text6, *Text7, *Text8, *Text9, *Text10, *Text11, *Text12,
        *Text13, *Text14, *Text15, *Text16, *Text17, *Text18, *Text19, *Text20, *Text21;
    QLabel* Label14;
    QCheckBox *Check1, *Check2, *Check3, *Check4, *Check5, *Check6, *Check7;
    forms::DBGrid* DBGrid1;
    forms::DBGrid* DBGrid2;
    QPushButton *Command1, *Command2, *Command3, *Command4;
    QAction *UjAdat, *RekordDupla, *CimzettTorol, *OsszTorol, *Aktivak, *NemAktiv, *SzuresKi, *CimzettNyom, *AtadaS,
        *Kilepes;

protected:
    void Form_Load() override;
    void Form_Activate() override;

    void Aktivak_Click();
    void NemAktiv_Click();
    void SzuresKi_Click();
    void Text21_Change();
    void UjAdat_Click();
    void Command4_Click();
    void RekordDupla_Click();
    void CimzettTorol_Click();
    void OsszTorol_Click();
    void Command1_Click();
    void Command2_Click();
    void Command3_Click();
    void DBGrid2_DblClick();
    void AtadaS_Click();
    void Kilepes_Click();
    void CimzettNyom_Click();

private:
    void setSource(const std::string& source);
    void removeNameless();
    void log(const std::string& action);
    QLabel* logKey;  // the current key for the action log (Text1 shows it)
};

}  // namespace partners
