// UtNyilvantartasFormX, "Útnyilvántartás felvitel - Kerova": the trip log. One row of Utak is one
// journey; rows of one log sheet share the group id CsoportAzonositó. The form picks vehicle,
// driver, route and partner from grids beside the entry boxes (or from their master forms), computes
// the row's figures with "OK és Összesít", starts new trips and new groups, filters by day and by
// group, edits in the grid, and prints the sheet.
#pragma once

#include <string>

#include "forms/recordform.h"
#include "trips/tripcalc.h"

class QAction;
class QCheckBox;
class QComboBox;
class QDateEdit;
class QLabel;
class QLineEdit;
class QPushButton;

namespace trips {

class UtNyilvantartasFormX : public forms::RecordForm {
    Q_OBJECT
public:
    static constexpr const char* Name = "UtNyilvantartasFormX";
    static constexpr const char* Title = "Útnyilvántartás felvitel - Kerova";
    static constexpr const char* AllSource = "select * from Utak order by Dátum, IndulásIdeje";
    static constexpr const char* ArrivalSource = "select * from Utak order by Dátum, ÉrkezésIdeje";

    static constexpr const char* NoGroupText = "Nincs csoportazonosító! Törölhető a sor?";
    static constexpr const char* NoGroupTitle = "FIGYELEM! SÚLYOS BEVITELI HIBA!";
    static constexpr const char* FatalText = "Nincs csoportazonosító! Lépjen ki a programból!";
    static constexpr const char* FatalTitle = "FIGYELEM! SÚLYOS HIBA!";
    static constexpr const char* ZeroDistance = "Nullás úttávolság nem adható meg!";
    static constexpr const char* ZeroTitleGroup = "FIGYELEM! Nem kérhető új adat hibás adatra!";
    static constexpr const char* ZeroTitleMonth = "FIGYELEM! Nem kérhető új adat hibásra!";
    static constexpr const char* AskGroup = "Valóban szeretne másik csoportazonosítót adni?";
    static constexpr const char* AskMonth = "Valóban szeretne másik hónappal új csoportazonosítót adni?";
    static constexpr const char* DeleteText = "Biztosan törli az aktuális adatot?";
    static constexpr const char* DeleteTitle = "FIGYELEM! VÉGLEGES ADATTÖRLÉS!";
    static constexpr const char* GroupGone = "Az azonosítóról minden adat törölve! Kilépünk a főmenüre!";
    static constexpr const char* MandatoryText = "A rendszám és távolság megadása kötelező! Az adat törölhető?";
    static constexpr const char* MandatoryTitle = "FIGYELEM! Hibás adat!";
    static constexpr const char* NoSuchDay = "Nincs ilyen dátum felvitel az utak nyilvántartásában!";
    static constexpr const char* NoSuchDayTitle = "FIGYELEM! Minden adat listája a táblázatban!";
    static constexpr const char* NoPurposes = "Üres a megnevezés törzs!";
    static constexpr const char* NoPurposesTitle = "FIGYELEM! Vigyen fel a törzsbe adatot!";

    UtNyilvantartasFormX();

    forms::DataControl *UtakData, *GkData, *GkVezetoData, *TavData, *PartnerData, *MegnevezesData, *SumData,
        *NapidijData, *NyomData;

    QLineEdit *Text1, *Text2, *Text3, *Text4, *Text5, *Text6, *Text9, *Text10, *Text11, *Text14, *Text15,
        *Text16, *Text17, *Text18, *Text19, *Text20, *Text23, *Text24;
    QLineEdit *Text12, *Text13, *Text21, *Text22, *Text25, *Text26, *Text27;  // quick searches
    QLineEdit *MaskEdBox1, *MaskEdBox2, *MaskEdBox3, *MaskEdBox4;
    QDateEdit *DTPicker1, *DTPicker2, *DTPicker3;
    QLabel *Label12, *Label14, *Label18, *Label24, *Label28, *Label29, *Label33, *Label34, *Label35;
    QCheckBox* Check1;
    QComboBox* Combo1;
    forms::DBGrid *DBGrid1, *DBGrid2, *DBGrid3, *DBGrid4, *DBGrid5;
    QPushButton *Command1, *Command2, *Command3, *Command4, *Command5;
    QAction *OKMent, *UjUt, *MasikJarmu, *Nyomtatas, *Torol, *Kilepes, *Segedlet, *SzallSzem, *CsatoltOkm,
        *Jarmuvek, *Jarmuvezetok, *UtakTavok, *Megnevezesek, *PartnereK, *UzemanyagArTorzs;

    void exitHandler() override { Kilepes_Click(); }

    void Command1_Click();
    void Command2_Click();
    void Command3_Click();
    void Command4_Click();
    void MasikJarmu_Click();
    void UjUt_Click();
    void Torol_Click();
    void Kilepes_Click();
    void Nyomtatas_Click();
    void Label18_Click();
    void Combo1_Click();
    void UzemanyagArTorzs_Click();
    void Jarmuvek_Click();
    void Jarmuvezetok_Click();
    void UtakTavok_Click();
    void Megnevezesek_Click();
    void PartnereK_Click();
    void SzallSzem_Click();
    void CsatoltOkm_Click();
    void Segedlet_Click();
    void DBGrid1_DblClick();
    void DBGrid1_RowColChange();
    void DBGrid2_Click();
    void DBGrid3_Click();
    void DBGrid4_Click();
    void DBGrid5_DblClick();

    // The working values of "OK és Összesít", kept between presses.
    calc::Work work;

protected:
    void Form_Load() override;
    void Form_Activate() override;

private:
    void build();
    void wire();
    void newGroup(bool nextMonth);
    void restrictToGroup(const std::string& id);
    void setSource(forms::DataControl* dc, const std::string& source, forms::DBGrid* grid);
    void groupTotal(const std::string& sql, bool store);
    void previousTrip();
    void reloadPurposes();
    // After a master opened from the menu closed: its source read again and its grid redrawn;
    // false when the trip form itself was unloaded meanwhile.
    bool backFromMaster(forms::DataControl* source, forms::DBGrid* grid);
    void quick(forms::DataControl* dc, const std::string& column, const std::string& typed, vb::Variant* mark);
    bool gridCellCheck(int row, int column, std::string& text);
    void leave(std::initializer_list<forms::DataControl*> sources);
    std::string groupIdText() const;

    std::string keptPlate_, keptType_, keptDriver_;
    vb::Date keptDate_{};
    vb::Date previousDate_{};
    std::string previousArrival_;
    vb::Variant markVehicle_, markDriver_, markTrip_;
    bool reportShown_ = false;
};

}  // namespace trips
