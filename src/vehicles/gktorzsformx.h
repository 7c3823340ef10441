// GKTorzsFormX: the vehicle master on Jarmuvek. Around the current vehicle it marks what has
// expired (the " LEJÁRT! " labels, the pale red kilometre fields, the Figyelmeztetés flag); the
// side grid lists the flagged vehicles. A deleted vehicle is copied into JarmuvekArchiv first, and
// the archive can be shown in place of the live rows. Opened by another form, it is a vehicle
// picker ("Választ"): the plate, the key, the owner and the subcontractor mark go to Globals.
#pragma once

#include <string>

#include "forms/recordform.h"

class QAction;
class QCheckBox;
class QComboBox;
class QDateEdit;
class QLabel;
class QLineEdit;
class QPushButton;

namespace vehicles {

class GKTorzsFormX : public forms::RecordForm {
    Q_OBJECT
public:
    static constexpr const char* Name = "GKTorzsFormX";
    static constexpr const char* Title = "Járművek nyilvántartása törzs Tartosan és Kerova";
    static constexpr const char* LiveSource = "select * from Jarmuvek order by recordID";
    static constexpr const char* WarnedSource = "select * from Jarmuvek where Figyelmeztetés = True order by GkFrsz";
    static constexpr const char* ArchiveSource = "select * from JarmuvekArchiv order by recordID";
    static constexpr const char* PartnerSource = "select BerNev, recordID from beraktar order by BerNev";
    static constexpr const char* Expired = " LEJÁRT! ";
    // The kilometre fields of the periodic works: pale red when due, white otherwise.
    static constexpr int32_t WarnColor = 0xC0C0FF;
    static constexpr int32_t PlainColor = 0xFFFFFF;

    GKTorzsFormX();

    void exitHandler() override { Kilepes_Click(); }

    // The expiry marks of the current record (run at every move, after a save and on activation).
    void CheckWarnings();

    forms::DataControl *JarmuvekData, *Data1, *ArchivData, *PartnerData;
    QLineEdit *Text1, *Text2, *Text3, *Text4, *Text5, *Text6, *Text7, *Text8, *Text9, *Text10, *Text11,
        *Text12, *Text13, *Text14, *Text15, *Text16, *Text17, *Text18, *Text19, *Text20, *Text21, *Text22;
    QDateEdit *DTPicker1, *DTPicker2, *DTPicker3, *DTPicker4, *DTPicker5, *DTPicker6, *DTPicker7, *DTPicker8,
        *DTPicker9;
    QLabel *Label12, *Label14, *Label15, *Label16, *Label17, *Label35, *Label36, *Label39;
    QLabel *Label21, *Label23, *Label24;
    QCheckBox *Check1, *Check2;
    QComboBox* Combo1;
    forms::DBGrid *DBGrid1, *DBGrid2;
    QPushButton *Command1, *Command2, *Command3, *Command4, *Command5, *Command6, *Command7, *Command8,
        *Command9, *Command10, *Command11, *Command12, *Command13;
    QAction *Mentes, *GKUjadat, *GKTorol, *SzervizModul, *FrszKeres, *GKtipusKeres, *GKVezetoKeres, *AktLapNyom,
        *AktLapTolMindNyom, *MuszakiKell, *ArchivumA, *VisszaEles, *Valaszt, *Segedlet, *Kilepes;

protected:
    void Form_Load() override;
    void Form_Activate() override;

private:
    void build();
    void bindings();
    void events();

    void Mentes_Click();
    void GKUjadat_Click();
    void GKTorol_Click();
    void FrszKeres_Click();
    void GKtipusKeres_Click();
    void GKVezetoKeres_Click();
    void AktLapNyom_Click();
    void AktLapTolMindNyom_Click();
    void MuszakiKell_Click();
    void SzervizModul_Click();
    void ArchivumA_Click();
    void VisszaEles_Click();
    void Command1_Click();
    void Segedlet_Click();
    void Kilepes_Click();
    void Valaszt_Click();
    void Combo1_Click(int index);
    void Command2_Click();
    void Text21_Change();
    void DBGrid2_Click();
    void DBGrid1_HeadClick(int column);
    void Label24_Change();
    void RefreshView();
    // Text9 and Text22 show the same column: an edit of one shows in the other.
    void mirror(QLineEdit* from, QLineEdit* to);
    bool mirroring_ = false;
};

}  // namespace vehicles
