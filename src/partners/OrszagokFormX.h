// The country marks of Orszagjel, with a copy in the archive table OrszagjelArchiv of
// Parameter.dsb, and the hand-over of one row to a caller through CountryPicked,
// CountryMarkTransfer and CountryNameTransfer.
#pragma once

#include "forms/recordform.h"

class QAction;
class QLabel;
class QLineEdit;
class QPushButton;

namespace forms {
class DBGrid;
}

namespace partners {

class OrszagokFormX : public forms::RecordForm {
public:
    OrszagokFormX();
    void exitHandler() override;

    forms::DataControl* OrszagJel;
    forms::DataControl* OrszagJelArchivData;
    QLabel *Label1, *Label2;
    QLineEdit *Text1, *Text2;
    forms::DBGrid* DBGrid1;
    QPushButton *Command1, *Command2, *Command3, *Command4, *Command5, *Command6, *Command7, *Command8;
    QAction *OKMentes, *UjOrsz, *OTorol, *OMent, *OTolt, *OSeg, *Kilepes, *AdatAtad;

protected:
    void Form_Load() override;

    void OKMentes_Click();
    void UjOrsz_Click();
    void OTorol_Click();
    void OMent_Click();
    void OTolt_Click();
    void OSeg_Click();
    void Kilepes_Click();
    void AdatAtad_Click();
    void DBGrid1_HeadClick(int column);

private:
    // Requery (which stores a pending edit) and delete every row whose mark or name is empty.
    void sweepBlankRows();
};

}  // namespace partners
