// VezetokTorzsFormX, "Járművezető adatai törzs Tartosan": the driver master on Vezetok
// (Kerova.dsb) with the vehicles assigned to the driver on screen, VezetokJarmuvei in the separate
// file Tartosan.dsb. The two files are not kept in step: deleting a driver leaves his assignments.
#pragma once

#include <string>

#include "forms/recordform.h"

class QAction;
class QCheckBox;
class QDateEdit;
class QLabel;
class QLineEdit;
class QPushButton;

namespace trips {

class VezetokTorzsFormX : public forms::RecordForm {
    Q_OBJECT
public:
    static constexpr const char* Name = "VezetokTorzsFormX";
    static constexpr const char* Title = "Járművezető adatai törzs Tartosan";
    static constexpr const char* AllSource = "select * from Vezetok order by VezetöNeve";
    // Aktiv true means NOT active: the filter keeps the rows whose "NEM aktív" box is unticked.
    static constexpr const char* ActiveSource = "select * from Vezetok where Aktiv = False order by VezetöNeve";
    static constexpr const char* AssignedSource = "select * from VezetokJarmuvei where VezetöID = ";

    static constexpr const char* NoActive = "Nincs AKTÍV járművezető!";
    static constexpr const char* NoDriver = "Nincs járművezető! Visz fel ÚJ adatot?";
    static constexpr const char* NoRow = "Nincs adat, vagy nem jelölt ki adatsort!";
    static constexpr const char* DeleteTitle = "FIGYELEM! Végleges törlés!";
    static constexpr const char* DeleteVehicle = "Törli a kijelölt jármű adatsort?";
    static constexpr const char* DeleteDriver = "Valóban véglegesen törli a kijelölt adatsort?";
    static constexpr const char* DeletedAll = "Minden adat törölve (Deleted All)! Kér új adatot (New)?";

    VezetokTorzsFormX();

    forms::DataControl *VezetoData, *JarmuData;
    QLabel *Label17, *Label13, *Label7, *Label8, *Label18, *TodayLabel;
    QLineEdit *Text1, *Text2, *Text3, *Text4, *Text5, *Text6, *Text7, *Text8, *Text9, *Text10, *Text11, *Text12,
        *Text13;
    QDateEdit *DTPicker1, *DTPicker2;
    QCheckBox* Check1;
    forms::DBGrid *DBGrid1, *DBGrid2;
    QPushButton *Command1, *Command2, *Command3, *Command4, *Command5, *Command6, *Command7, *Command8,
        *Command9, *Command10, *Command11, *Command12;
    QAction *OKMent, *Frissites, *UjAdat, *Torl_s, *CsakAktiv, *SzuresSKI, *AtadaS, *Segedlet, *Kilepes;

    void exitHandler() override { Kilepes_Click(); }

    void OKMent_Click();
    void Command2_Click();
    void Command3_Click();
    void Frissites_Click();
    void UjAdat_Click();
    void CsakAktiv_Click();
    void SzuresSKI_Click();
    void AtadaS_Click();
    void Torl_s_Click();
    void Kilepes_Click();
    void Segedlet_Click();
    void Command12_Click();
    void Text13_Change();
    void Label7_Change();
    void DBGrid1_HeadClick(int column);

protected:
    void Form_Load() override;
    void Form_Activate() override;

private:
    void build();
    bool addDriverRow(bool licenceToday);
    void reloadAssigned();
    void setSource(const char* source);
    void lastThenFirst();
    void resetList();
    void deletedAll();
    std::string assignedKey_ = "\x01";  // the Label7 text the assigned list was loaded for
};

}  // namespace trips
