// KerovaX: the program's start form and its only way in. The main menu and six large buttons open
// every module's form by name; each activation reloads the settings into Globals, runs the four
// deadline reminders over the vehicles and lists the warned vehicles.
#pragma once

#include <functional>
#include <string>

#include "forms/recordform.h"

class QAction;
class QDateEdit;
class QLabel;
class QLineEdit;
class QMenu;
class QMenuBar;
class QPushButton;

namespace app {

class KerovaX : public forms::RecordForm {
    Q_OBJECT
public:
    KerovaX();

    static constexpr const char* Version = "1.0";
    static constexpr const char* WebAddress = "https://kerova.hu";
    static constexpr const char* NoDatabasesText = "Olyan könyvtárban van, amelyikben nincsenek adatbázisok!";
    static constexpr const char* NoDatabasesTitle = "FIGYELEM! Válasszon másik megbízó adatszolgáltató alkönyvtárat!";
    static constexpr const char* ReminderTitle = "FIGYELEM!";
    static constexpr const char* InspectionText = "Van olyan jármű, aminek a műszaki vizsgája aktuális!";
    static constexpr const char* TachoCalibrationText = "Van olyan jármű, aminek a tachográf hitelesítése aktuális!";
    static constexpr const char* TachoPermitText = "Van olyan jármű, aminek a tachográf OMH engedélye lejár!";
    static constexpr const char* InsuranceCardText = "Van olyan jármű, aminek a biztosítási zöldkártyája lejár!";
    static constexpr const char* WarnedListSource = "select * from Jarmuvek where Figyelmeztetés = True order by GkFrsz";

    // How a click on Text1 opens the maker's address (a browser on screen; tests replace it).
    static std::function<void(const std::string&)> openAddress;

    forms::DataControl *JarmuData, *ParameterData, *EgyebParameterData, *MennyEgysData, *PathData, *KMData;
    QLabel *Label1, *Label2, *Label3, *Label4, *Label11, *Label13, *Label14, *Label15, *Label16, *Label17;
    QLabel *Label7, *Label8, *Label9, *Label10, *GridCaption;
    QLineEdit* Text1;
    QDateEdit* DTPicker1;
    forms::DBGrid* DBGrid1;
    QPushButton *Command1, *Command2, *Command3, *Command4, *Command5, *Command6;
    QMenu *Torzsek, *GKAdatbe, *GkHelp;
    QAction *UtTav, *Gepkocsik, *Vezetok, *GKBesz, *Megnevezesek, *Uzemelteto, *AlkatreszTorzse, *ParameterAdat;
    QAction *KerovatUj, *KMNyt, *GKSzamlaBe, *SzervizModul, *Lekerdezes, *UaKtsg, *AdatSzerviz, *Kezik, *Kilepes;

    void exitHandler() override { Kilepes_Click(); }

protected:
    void Form_Load() override;
    void Form_Activate() override;

private:
    void buildMenu(QMenuBar* bar);
    void buildLayout(QMenuBar* bar);
    void startUp();
    bool operatorCheck();
    void readParameters();
    void reminder(int days, const std::string& column, const char* text);
    void MarkWarned();
    void listWarned();

    // A menu entry: KerovaX hides, the form opens modally, KerovaX shows again (and reactivates).
    void openFromMenu(const std::string& formName);
    void Gepkocsik_Click();
    void AlkatreszTorzse_Click();
    void UaKtsg_Click();
    void AdatSzerviz_Click();
    void Kilepes_Click();
};

// The four paths of the last row of table Path into Globals (the main form and the settings' exit).
void readPaths(forms::DataControl* pathData);

}  // namespace app
