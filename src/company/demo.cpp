// The demo company. The model is built first (partners, routes, drivers, vehicles, articles,
// invoices, trips, service visits), then each file is written in one batch through the engine.
//
// The random choices come from a 48-bit linear congruential generator with a fixed seed (the
// generator of java.util.Random, so the demo equals the one the earlier version of the program
// made on the same day). Every call to it is sequenced explicitly: C++ leaves the order of
// operands of + and of function arguments open.
//
// The deadlines give the main form's reminders something to say: two vehicles have a technical
// inspection that ran out more than the warning days ago, one truck a tachograph calibration and
// an OMH permit older than their limits, one van an expired green card. Vehicles with a due date
// also carry Figyelmeztetés, so the warned-vehicles grid is filled from the start.
#include "company/demo.h"
#include "company/javarandom.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <cstdint>
#include <iterator>
#include <map>
#include <memory>
#include <stdexcept>
#include <optional>
#include <set>
#include <utility>

#include "company/catalog.h"
#include "company/folder.h"
#include "jet/database.h"

namespace company {

namespace {

namespace fs = std::filesystem;
using namespace std::chrono;
using Day = sys_days;

// The warning limits of VizsgaFigyelmeztetoNap, in its column order.
constexpr int WarnInspectionDays = 30;
constexpr int WarnGreenCardDays = 30;
constexpr int WarnTachoCalibrationDays = 30;
constexpr int WarnTachoPermitDays = 30;
constexpr int WarnInsuranceCardDays = 15;

constexpr double Allowance = 5000;
const std::string HUF = "HUF";

const std::string OperatorName = "Kőbányai Fuvarozó és Szerviz Kft.";
const std::string OperatorZip = "1105";
const std::string OperatorTown = "Budapest";
const std::string OperatorStreet = "Fűzfa utca 12.";
const std::string OperatorTax = "14725836242";


// --- dates ---

Day plusDays(Day d, long n) { return d + days(n); }
Day minusYears(Day d, int n) {
    year_month_day ymd(d);
    year_month_day r = (ymd.year() - years(n)) / ymd.month() / ymd.day();
    if (!r.ok()) r = year_month_day((ymd.year() - years(n)) / ymd.month() / last);
    return Day(r);
}
Day firstOfMonth(Day d, int monthsLater) {
    year_month_day ymd(d);
    year_month ym = year_month(ymd.year(), ymd.month()) + months(monthsLater);
    return Day(ym / 1);
}
int yearOf(Day d) { return static_cast<int>(year_month_day(d).year()); }
unsigned monthOf(Day d) { return static_cast<unsigned>(year_month_day(d).month()); }
unsigned dayOf(Day d) { return static_cast<unsigned>(year_month_day(d).day()); }
bool weekend(Day d) {
    weekday w(d);
    return w == Saturday || w == Sunday;
}
int monthKey(Day d) { return yearOf(d) * 12 + static_cast<int>(monthOf(d)); }

jet::Value dt(std::optional<Day> d) {
    if (!d) return {};
    static const Day epoch = Day(1899y / December / 30);
    return jet::DateTime{static_cast<double>((*d - epoch).count())};
}

// --- numbers ---

double javaRound(double v) { return std::floor(v + 0.5); }

// A figure as the trip form leaves it in the table: computed as a double, shown with at most 15
// significant digits, and read back from that text.
double shown(double v) {
    char buf[64];
    std::snprintf(buf, sizeof buf, "%.14e", v);
    return std::strtod(buf, nullptr);
}

jet::Value money(double v) { return jet::Currency{static_cast<int64_t>(std::llround(v * 100)) * 100}; }

// Minutes since midnight as the program keeps a time of day: hours, then two minute digits
// after the comma.
double timeOfDay(int minutes) { return (minutes / 60 * 100 + minutes % 60) / 100.0; }

std::string pad(int v, int width) {
    char buf[32];
    std::snprintf(buf, sizeof buf, "%0*d", width, v);
    return buf;
}

// The first three letters in capitals ("Szűrők" -> "SZŰ"); the groups are Hungarian words.
std::string head3Upper(const std::string& s) {
    static const std::vector<std::pair<std::string, std::string>> accents = {
        {"á", "Á"}, {"é", "É"}, {"í", "Í"}, {"ó", "Ó"}, {"ö", "Ö"},
        {"ő", "Ő"}, {"ú", "Ú"}, {"ü", "Ü"}, {"ű", "Ű"}};
    std::string out;
    size_t i = 0;
    for (int n = 0; n < 3 && i < s.size(); ++n) {
        auto b = static_cast<unsigned char>(s[i]);
        size_t len = b < 0x80 ? 1 : b < 0xE0 ? 2 : b < 0xF0 ? 3 : 4;
        std::string ch = s.substr(i, len);
        i += len;
        if (len == 1) {
            out += static_cast<char>(b >= 'a' && b <= 'z' ? b - 32 : b);
            continue;
        }
        for (const auto& [lo, up] : accents)
            if (ch == lo) ch = up;
        out += ch;
    }
    return out;
}

std::string replaceAll(std::string s, const std::string& what, const std::string& with) {
    for (size_t p = s.find(what); p != std::string::npos; p = s.find(what, p + with.size()))
        s.replace(p, what.size(), with);
    return s;
}

bool startsWith(const std::string& s, const std::string& prefix) { return s.rfind(prefix, 0) == 0; }

// --- the model ---

struct Partner {
    int id = 0;
    std::string name, zip, town, street, phone, fax, mobile, tax, account, contact, country, status;
    bool fuel = false;
};

struct Driver {
    int id = 0;
    std::string name, licence, post, zip, town, street, contact, employer, taxId, taj, birthPlace, mother;
    Day licenceExpiry, birthDate;
    bool inactive = false;
    std::string plate;  // empty: no vehicle of its own
    int vehicleId = 0;
};

struct Vehicle {
    int id = 0;
    std::string plate, type;
    Day firstReg;
    double ccm = 0, norm = 0;
    Driver* driver = nullptr;
    int serviceDays = 0;
    double serviceKm = 0;
    Day inspection, greenCard, compulsory, international, extinguisher, lastService;
    std::optional<Day> tacho, tachoPermit;
    double casco = 0, compulsoryFee = 0, startKm = 0, currentKm = 0;
    int ownerId = 0;
    std::string ownerName;
    bool subcontractor = false;
    std::string vin, engineNo;
    double inspectionKm = 0, oilKm = 0, logKm = 0, drivetrainKm = 0, timingKm = 0;
    bool warned = false, truck = false;
    std::string fuel;
    double activity = 0;
    std::vector<std::vector<std::string>> tours;
    std::map<Day, double> odometer;
};

struct Route {
    std::string from, to;
    double km = 0;
    std::string fromCountry, toCountry;
};

struct Invoice {
    const Partner* seller = nullptr;
    const Vehicle* vehicle = nullptr;
    std::string goods, fuel;
    Day date;
    int number = 0, quantity = 0;
    double price = 0;
    std::string serial;
};

struct Trip {
    const Vehicle* vehicle = nullptr;
    const Driver* driver = nullptr;
    Day date;
    std::string from, to;
    double km = 0;
    int dep = 0, arr = 0;
    std::string group;
    double groupKm = 0;
    std::string purpose;
    int load = 0;
    const Partner* partner = nullptr;
    double litres = 0, price = 0, startKm = 0, endKm = 0;
    int workStart = 0, workEnd = 0;
    double allowance = 0;
    bool allowanceDay = false;
    std::optional<Day> prevDate;
    int prevArr = 0;
};

struct Article {
    int id = 0;
    std::string code, name, unit, tariff;
    double net = 0, purchase = 0;
    std::string group;
    double stock = 0;
    std::string shelf;
    bool service = false;
};

struct Visit {
    const Vehicle* vehicle = nullptr;
    Day date;
    std::string job;
    double hours = 0, km = 0;
    int mechanic = 0;
    std::string key;
    std::vector<std::pair<int, int>> parts;  // article index, quantity
};

using Fields = std::vector<std::pair<std::string, jet::Value>>;

Fields operator+(Fields a, const Fields& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

// A value converted to a column's type, as the record layer would store it; nullopt when it
// does not fit.
std::optional<jet::Value> toColumn(const jet::Value& v, jet::ColType type) {
    using jet::ColType;
    double num = 0;
    bool isNum = true;
    if (auto i = std::get_if<int32_t>(&v)) num = *i;
    else if (auto d = std::get_if<double>(&v)) num = *d;
    else isNum = false;
    switch (type) {
        case ColType::Text:
        case ColType::Memo:
            if (std::holds_alternative<std::string>(v)) return v;
            return std::nullopt;
        case ColType::Boolean:
            if (std::holds_alternative<bool>(v)) return v;
            return std::nullopt;
        case ColType::DateTime:
            if (std::holds_alternative<jet::DateTime>(v)) return v;
            return std::nullopt;
        case ColType::Currency:
            if (std::holds_alternative<jet::Currency>(v)) return v;
            if (isNum) return money(num);
            return std::nullopt;
        case ColType::Double:
            if (isNum) return jet::Value(num);
            return std::nullopt;
        case ColType::Long:
            if (isNum && num == std::floor(num) && std::fabs(num) <= INT32_MAX)
                return jet::Value(static_cast<int32_t>(num));
            return std::nullopt;
        case ColType::Integer:
            if (isNum && num == std::floor(num) && std::fabs(num) <= 32767)
                return jet::Value(static_cast<int16_t>(num));
            return std::nullopt;
        default:
            return std::nullopt;
    }
}

// Adds rows to one table, setting columns by name. A column the table lacks or a value that
// doesn't fit is skipped and reported once.
class Rows {
public:
    Rows(jet::Database& db, const std::string& table, std::vector<std::string>& warnings)
        : table_(db.table(table)), warnings_(warnings) {}

    void add(const Fields& fields) {
        const auto& cols = table_.def().columns;
        jet::Row row(cols.size());
        for (const auto& [name, value] : fields) {
            size_t at = cols.size();
            for (size_t i = 0; i < cols.size(); ++i)
                if (sameName(cols[i].name, name)) at = i;
            if (at == cols.size()) {
                if (reported_.insert(name).second)
                    warnings_.push_back("nincs ilyen oszlop: " + table_.name() + "." + name + " (kihagyva)");
                continue;
            }
            if (jet::isNull(value)) continue;
            auto converted = toColumn(value, cols[at].type);
            if (!converted) {
                if (reported_.insert(name).second)
                    warnings_.push_back("az érték nem írható: " + table_.name() + "." + name);
                continue;
            }
            row[at] = std::move(*converted);
        }
        table_.insert(std::move(row));
    }

private:
    jet::Table& table_;
    std::vector<std::string>& warnings_;
    std::set<std::string> reported_;
};

class Demo {
public:
    Demo(fs::path dir, Day today) : dir_(std::move(dir)), today_(today), rnd_(DemoSeed) {}

    std::vector<std::string> warnings;

    void build() {
        makePartners();
        makeRoutes();
        makeDrivers();
        makeVehicles();
        makeArticles();
        makeInvoices();
        makeTrips();
        makeVisits();
        finishVehicles();
        makeAttachments();
        write();
    }

private:
    fs::path dir_;
    Day today_;
    Lcg48 rnd_;

    // Stable addresses: the model points between its parts.
    std::vector<std::unique_ptr<Partner>> partners_;
    std::vector<std::unique_ptr<Driver>> drivers_;
    std::vector<std::unique_ptr<Vehicle>> vehicles_;
    std::vector<Route> routes_;               // in the order first given
    std::map<std::string, size_t> routeAt_;   // "from|to" -> index
    std::vector<Invoice> invoices_;
    std::vector<Trip> trips_;
    std::vector<Article> articles_;
    std::vector<Visit> visits_;
    std::set<std::string> usedKeys_;
    std::vector<std::pair<std::string, std::vector<std::string>>> passengers_, documents_;

    std::string digits(int n) {
        std::string b;
        for (int i = 0; i < n; ++i) b += static_cast<char>('0' + (i == 0 ? 1 + rnd_.nextInt(9) : rnd_.nextInt(10)));
        return b;
    }
    std::string letters(int n) {
        std::string b;
        for (int i = 0; i < n; ++i) b += static_cast<char>('A' + rnd_.nextInt(26));
        return b;
    }

    // ---------------------------------------------------------------- the model

    void makePartners() {
        // fuel suppliers
        partner("Tiszai Üzemanyag-kereskedő Kft.", "1097", "Budapest", "Könyves Kálmán körút 11.", "Gál Ilona", "H", true);
        partner("Dunántúli Kúthálózat Zrt.", "8000", "Székesfehérvár", "Berényi út 72.", "Fehér Ákos", "H", true);
        partner("Alföldi Tüzelő- és Üzemanyag Bt.", "6000", "Kecskemét", "Izsáki út 5.", "Bognár Edit", "H", true);
        // customers of the transport
        partner("Győri Csavar- és Lemezgyártó Kft.", "9027", "Győr", "Fehérvári út 18.", "Németh Gábor", "H", false);
        partner("Szegedi Paprikafeldolgozó Zrt.", "6724", "Szeged", "Kossuth Lajos sugárút 92.", "Papp Margit", "H", false);
        partner("Pécsi Kesztyűgyártó Kft.", "7630", "Pécs", "Hengermalom utca 3.", "Török Ildikó", "H", false);
        partner("Miskolci Acélszerkezet Kft.", "3527", "Miskolc", "Sajó utca 14.", "Oláh Tibor", "H", false);
        partner("Egri Borház és Pincészet Bt.", "3300", "Eger", "Szépasszonyvölgy utca 21.", "Kelemen Dóra", "H", false);
        partner("Kecskeméti Gyümölcsfeldolgozó Kft.", "6000", "Kecskemét", "Szolnoki út 40.", "Barta Imre", "H", false);
        partner("Debreceni Hűtőház Zrt.", "4031", "Debrecen", "Határ út 1/b.", "Erdős Károly", "H", false);
        partner("Nyírségi Mezőgép Kft.", "4400", "Nyíregyháza", "Tünde utca 8.", "Sipos Réka", "H", false);
        partner("Fehérvári Alumíniumöntöde Kft.", "8000", "Székesfehérvár", "Holland fasor 2.", "Vörös Lajos", "H", false);
        partner("Kőbányai Sörraktár Kft.", "1106", "Budapest", "Maglódi út 47.", "Hegedűs Anna", "H", false);
        partner("Wiener Logistik GmbH", "1110", "Wien", "Simmeringer Hauptstraße 99.", "Franz Huber", "A", false);
        // the owner of the subcontracted truck
        partner("Szőke és Fia Fuvarozó Bt.", "2040", "Budaörs", "Szabadság út 55.", "Szőke Ödön", "H", false);
    }

    void partner(std::string name, std::string zip, std::string town, std::string street, std::string contact,
                 std::string country, bool fuel) {
        auto p = std::make_unique<Partner>();
        p->id = static_cast<int>(partners_.size()) + 1;
        p->name = name;
        p->zip = zip;
        p->town = town;
        p->street = street;
        p->contact = contact;
        p->country = country;
        p->fuel = fuel;
        bool home = country == "H";
        if (home && town == "Budapest") {
            p->phone = "061" + digits(7);
        } else if (home) {
            std::string area = digits(2);
            p->phone = "06" + area + digits(6);
        } else {
            p->phone = "00431" + digits(7);
        }
        p->fax = p->phone.substr(0, p->phone.size() - 2) + "99";
        p->mobile = "0630" + digits(7);
        if (home) {
            std::string first = digits(8);
            p->tax = first + "2" + (rnd_.nextBoolean() ? "42" : "13");
        } else {
            p->tax = "ATU" + digits(8);
        }
        if (home) {
            std::string bank = digits(4);
            p->account = "1170" + bank + digits(8) + "00000000";
        } else {
            p->account = "AT61" + digits(16);
        }
        p->status = fuel ? "2" : "1";
        partners_.push_back(std::move(p));
    }

    const Partner* partnerIn(const std::string& town) const {
        for (const auto& p : partners_)
            if (!p->fuel && p->town == town && !startsWith(p->name, "Szőke")) return p.get();
        return nullptr;
    }

    const Partner& partnerStarting(const std::string& prefix) const {
        for (const auto& p : partners_)
            if (startsWith(p->name, prefix)) return *p;
        throw std::logic_error("no partner " + prefix);
    }

    void makeRoutes() {
        route("Budapest", "Győr", 121);
        route("Budapest", "Székesfehérvár", 66);
        route("Budapest", "Kecskemét", 86);
        route("Budapest", "Szeged", 171);
        route("Budapest", "Pécs", 199);
        route("Budapest", "Miskolc", 182);
        route("Budapest", "Eger", 138);
        route("Budapest", "Debrecen", 231);
        route("Budapest", "Nyíregyháza", 232);
        route("Székesfehérvár", "Győr", 87);
        route("Kecskemét", "Szeged", 87);
        route("Miskolc", "Eger", 68);
        route("Debrecen", "Nyíregyháza", 50);
        route("Debrecen", "Miskolc", 98);
        route("Pécs", "Szeged", 188);
        route("Budapest", "Budapest, Kőbánya", 12);
        route("Győr", "Wien", 121, "H", "A");
        route("Budapest", "Wien", 243, "H", "A");
    }

    void putRoute(Route r) {
        std::string key = r.from + "|" + r.to;
        if (auto it = routeAt_.find(key); it != routeAt_.end()) {
            routes_[it->second] = std::move(r);
        } else {
            routeAt_[key] = routes_.size();
            routes_.push_back(std::move(r));
        }
    }

    void route(const std::string& a, const std::string& b, double km, const std::string& ca = "H",
               const std::string& cb = "H") {
        putRoute({a, b, km, ca, cb});
        putRoute({b, a, km, cb, ca});
    }

    const Route& routeOf(const std::string& a, const std::string& b) const {
        auto it = routeAt_.find(a + "|" + b);
        if (it == routeAt_.end()) throw std::logic_error("no route " + a + " - " + b);
        return routes_[it->second];
    }

    void makeDrivers() {
        driver("Kovács Béla", "tehergépkocsi-vezető", "1102", "Budapest", "Kőrösi Csoma Sándor út 31.", "Kovács Mária", "Budapest");
        driver("Szőke Ödön", "tehergépkocsi-vezető", "2040", "Budaörs", "Fűzfa utca 7.", "Varga Erzsébet", "Budaörs");
        driver("Horváth Zoltán", "gépkocsivezető", "1106", "Budapest", "Jászberényi út 24.", "Lengyel Ilona", "Győr");
        driver("Tóth Gyula", "gépkocsivezető", "2310", "Szigetszentmiklós", "Ősz utca 5.", "Fodor Katalin", "Kecskemét");
        driver("Varga Tünde", "gépkocsivezető", "1108", "Budapest", "Gyömrői út 118.", "Sárközi Júlia", "Szolnok");
        driver("Molnár Győző", "gépkocsivezető", "2100", "Gödöllő", "Szőlő utca 16.", "Pintér Rózsa", "Gödöllő");
        driver("Kiss Ferenc", "üzletkötő", "1104", "Budapest", "Mázsa tér 2.", "Antal Éva", "Eger");
        driver("Balogh Endre", "szervizvezető", "1101", "Budapest", "Üllői út 201.", "Szűcs Irén", "Pécs");
        driver("Lukács Dezső", "tehergépkocsi-vezető", "2230", "Gyömrő", "Bánki Donát utca 9.", "Csonka Gizella", "Miskolc");
        driver("Nagy Ernő", "tehergépkocsi-vezető", "2040", "Budaörs", "Kismartoni út 3.", "Kun Terézia", "Debrecen");
        Driver& retired = driver("Fekete Lőrinc", "gépkocsivezető", "1105", "Budapest", "Szőlő utca 40.", "Bíró Magdolna", "Szeged");
        retired.inactive = true;
        retired.licenceExpiry = plusDays(today_, -120);
    }

    Driver& driver(std::string name, std::string post, std::string zip, std::string town, std::string street,
                   std::string mother, std::string birthPlace) {
        auto d = std::make_unique<Driver>();
        d->id = static_cast<int>(drivers_.size()) + 1;
        d->name = name;
        d->post = post;
        d->zip = zip;
        d->town = town;
        d->street = street;
        d->mother = mother;
        d->birthPlace = birthPlace;
        std::string l = letters(2);
        d->licence = l + digits(6);
        d->licenceExpiry = plusDays(today_, 200 + rnd_.nextInt(3000));
        int age = 24 + rnd_.nextInt(36);
        d->birthDate = plusDays(minusYears(today_, age), -rnd_.nextInt(365));
        d->taxId = "8" + digits(9);
        std::string t1 = digits(3);
        std::string t2 = digits(3);
        d->taj = t1 + " " + t2 + " " + digits(3);
        std::string c1 = digits(3);
        d->contact = "06-30-" + c1 + "-" + digits(4);
        d->employer = OperatorName;
        drivers_.push_back(std::move(d));
        return *drivers_.back();
    }

    Driver& driverNamed(const std::string& name) {
        for (auto& d : drivers_)
            if (d->name == name) return *d;
        throw std::logic_error("no driver " + name);
    }

    std::vector<std::vector<std::string>> tours(std::initializer_list<std::string> specs) const {
        std::vector<std::vector<std::string>> out;
        for (const auto& s : specs) {
            std::vector<std::string> stops{"Budapest"};
            size_t start = 0;
            while (true) {
                size_t plus = s.find('+', start);
                std::string x = s.substr(start, plus == std::string::npos ? std::string::npos : plus - start);
                stops.push_back(x == "Kőbánya" ? "Budapest, Kőbánya" : x);
                if (plus == std::string::npos) break;
                start = plus + 1;
            }
            stops.push_back("Budapest");
            for (size_t i = 1; i < stops.size(); ++i) routeOf(stops[i - 1], stops[i]);  // fails early
            out.push_back(std::move(stops));
        }
        return out;
    }

    void makeVehicles() {
        Vehicle* v = &vehicle("KRV-101", "Ford Transit 2.2 TDCi", 2198, 8.9, "Kovács Béla", 6, 148300, "WF0XXXTTGX", "DRRS");
        v->tours = tours({"Győr", "Székesfehérvár", "Kecskemét", "Eger", "Székesfehérvár+Győr", "Kőbánya"});
        v->activity = 0.30;
        v = &vehicle("LHZ-245", "Volkswagen Crafter 2.0 TDI", 1968, 9.5, "Szőke Ödön", 4, 96400, "WV1ZZZSYZJ", "CKTC");
        v->tours = tours({"Szeged", "Kecskemét+Szeged", "Pécs", "Kecskemét"});
        v->activity = 0.28;
        v = &vehicle("MEG-318", "Iveco Daily 35S14", 2998, 11.2, "Horváth Zoltán", 8, 212750, "ZCFC35A00H", "F1CFL");
        v->inspection = plusDays(today_, -45);  // inspection overdue: the main form's first reminder
        v->tours = tours({"Miskolc", "Miskolc+Eger", "Eger", "Debrecen"});
        v->activity = 0.25;
        v = &vehicle("NTR-472", "Mercedes-Benz Sprinter 316 CDI", 2143, 10.1, "Tóth Gyula", 7, 174020, "WDB9066331", "OM651");
        v->tours = tours({"Debrecen+Nyíregyháza", "Debrecen", "Nyíregyháza", "Kecskemét"});
        v->activity = 0.26;
        v = &vehicle("PRS-539", "Renault Master 2.3 dCi", 2298, 9.8, "Varga Tünde", 5, 121880, "VF1MA000X5", "M9TB8");
        v->greenCard = plusDays(today_, -20);  // the insurance card has run out
        v->tours = tours({"Pécs", "Székesfehérvár", "Győr", "Kőbánya"});
        v->activity = 0.24;
        v = &vehicle("RKB-604", "Opel Vivaro 1.6 CDTI", 1598, 7.6, "Molnár Győző", 5, 88150, "W0LJ7B6A0G", "R9MA4");
        v->inspection = plusDays(today_, -10);  // ran out ten days ago: the vehicle form marks it
        v->tours = tours({"Kecskemét", "Eger", "Székesfehérvár", "Kőbánya"});
        v->activity = 0.22;
        v = &vehicle("SZO-711", "Škoda Octavia Combi 1.6 TDI", 1598, 5.4, "Kiss Ferenc", 3, 63400, "TMBJG7NE4L", "DDYA");
        v->tours = tours({"Székesfehérvár", "Kecskemét", "Eger", "Győr", "Kőbánya"});
        v->activity = 0.20;
        v = &vehicle("TGY-826", "Suzuki Vitara 1.6", 1586, 6.9, "Balogh Endre", 4, 41270, "TSMLYE21S0", "M16A");
        v->fuel = "Benzin 95";
        v->tours = tours({"Kőbánya", "Székesfehérvár", "Kecskemét"});
        v->activity = 0.12;
        v = &vehicle("JFK-903", "MAN TGL 12.250", 6871, 19.5, "Lukács Dezső", 9, 386900, "WMAN08ZZ3J", "D0836");
        v->tacho = plusDays(today_, -50);  // older than today minus 30 days
        v->tachoPermit = plusDays(today_, -40);
        v->tours = tours({"Győr+Wien", "Wien", "Debrecen+Nyíregyháza", "Szeged", "Miskolc"});
        v->activity = 0.30;
        v->truck = true;
        v = &vehicle("HVG-158", "DAF LF 45.220", 6700, 21.0, "Nagy Ernő", 11, 452300, "XLRAE45CE0", "FR136");
        v->inspection = plusDays(today_, -75);  // the main form's first reminder
        v->tacho = plusDays(today_, 150);
        v->tachoPermit = plusDays(today_, 300);
        v->tours = tours({"Pécs", "Pécs+Szeged", "Miskolc+Eger", "Wien"});
        v->activity = 0.22;
        v->truck = true;
        const Partner& owner = partnerStarting("Szőke és Fia");
        v->ownerId = owner.id;
        v->ownerName = owner.name;
        v->subcontractor = true;
    }

    Vehicle& vehicle(std::string plate, std::string type, double ccm, double norm, const std::string& driver,
                     int age, double km, std::string vinPrefix, std::string enginePrefix) {
        auto v = std::make_unique<Vehicle>();
        v->id = static_cast<int>(vehicles_.size()) + 1;
        v->plate = plate;
        v->type = type;
        v->ccm = ccm;
        v->norm = norm;
        v->driver = &driverNamed(driver);
        v->driver->plate = plate;
        v->driver->vehicleId = v->id;
        v->firstReg = plusDays(minusYears(today_, age), -rnd_.nextInt(300));
        v->startKm = km;
        v->serviceDays = 365;
        v->serviceKm = ccm > 5000 ? 40000 : 30000;
        v->inspection = plusDays(today_, 40 + rnd_.nextInt(600));
        v->greenCard = plusDays(today_, 30 + rnd_.nextInt(300));
        v->compulsory = plusDays(today_, 20 + rnd_.nextInt(330));
        v->international = plusDays(today_, 60 + rnd_.nextInt(300));
        v->extinguisher = plusDays(today_, 30 + rnd_.nextInt(700));
        v->casco = ccm > 5000 ? 38500 : 14000 + 500 * rnd_.nextInt(12);
        v->compulsoryFee = ccm > 5000 ? 16900 : 5200 + 100 * rnd_.nextInt(30);
        v->ownerId = 0;
        v->ownerName = OperatorName;
        std::string vin = (vinPrefix + "0123456789").substr(0, 10) + letters(1);
        v->vin = vin + digits(6);
        v->engineNo = enginePrefix + digits(7);
        v->fuel = "Gázolaj";
        vehicles_.push_back(std::move(v));
        return *vehicles_.back();
    }

    void makeArticles() {
        article("MO-5W30-1", "Motorolaj 5W-30 szintetikus (1 l)", "l", "27101981", 3990, "Kenőanyagok", 120);
        article("SZ-OL-FT22", "Olajszűrő Ford Transit 2.2", "db", "84212300", 4650, "Szűrők", 14);
        article("SZ-LE-UNI", "Levegőszűrő betét", "db", "84213100", 6900, "Szűrők", 11);
        article("SZ-PO-UNI", "Pollenszűrő aktívszenes", "db", "84213920", 5400, "Szűrők", 9);
        article("SZ-GO-DSL", "Gázolajszűrő", "db", "84212300", 8200, "Szűrők", 12);
        article("FK-BET-E", "Fékbetét első (garnitúra)", "gar", "68132000", 18900, "Fékrendszer", 6);
        article("FK-TAR-E", "Féktárcsa első", "db", "87083091", 24500, "Fékrendszer", 8);
        article("VZ-KESZL", "Vezérműszíj-készlet vízpumpával", "klt", "40103200", 68000, "Motor", 3);
        article("FF-G12-5", "Fagyálló folyadék G12 (5 l)", "db", "38200000", 7400, "Folyadékok", 15);
        article("AD-BLUE-10", "AdBlue karbamidoldat (10 l)", "db", "31021010", 4200, "Folyadékok", 40);
        article("IZ-H7-12", "Izzó H7 12V 55W", "db", "85392130", 1650, "Elektromos", 30);
        article("AK-12-100", "Akkumulátor 12V 100Ah", "db", "85071020", 48500, "Elektromos", 4);
        article("GU-215-65", "Gumiabroncs 215/65 R16C téli", "db", "40112010", 42000, "Gumiabroncs", 16);
        article("AT-LAP-65", "Ablaktörlő lapát 650 mm", "db", "85129090", 3900, "Karosszéria", 20);
        article("SZ-TACHO", "Tachográf hitelesítés (szolgáltatás)", "alk", "", 38000, "Szolgáltatás", 0).service = true;
        article("SZ-MUSZAKI", "Műszaki vizsga ügyintézés (szolgáltatás)", "alk", "", 25000, "Szolgáltatás", 0).service = true;
    }

    Article& article(std::string code, std::string name, std::string unit, std::string tariff, double net,
                     std::string group, double stock) {
        Article a;
        a.id = static_cast<int>(articles_.size()) + 1;
        a.code = code;
        a.name = name;
        a.unit = unit;
        a.tariff = tariff;
        a.net = net;
        a.group = group;
        a.stock = stock;
        a.purchase = javaRound(net * 0.75);
        std::string row(1, static_cast<char>('A' + rnd_.nextInt(4)));
        int shelf = 10 + rnd_.nextInt(20);
        int level = 1 + rnd_.nextInt(5);
        a.shelf = row + "-" + std::to_string(shelf) + "-" + std::to_string(level);
        articles_.push_back(std::move(a));
        return articles_.back();
    }

    Day windowStart() const { return firstOfMonth(today_, -4); }

    void makeInvoices() {
        Day start = plusDays(windowStart(), -10);
        std::vector<const Partner*> sellers;
        for (const auto& p : partners_)
            if (p->fuel) sellers.push_back(p.get());
        std::vector<const Vehicle*> diesel;
        const Vehicle* petrol = nullptr;
        for (const auto& v : vehicles_) {
            if (startsWith(v->fuel, "Benzin")) {
                if (!petrol) petrol = v.get();
            } else {
                diesel.push_back(v.get());
            }
        }
        int seq = 0;
        int month = 0;
        for (Day m = firstOfMonth(start, 0); m <= today_; m = firstOfMonth(m, 1), ++month) {
            for (int k = 0; k < 4; ++k) {
                Day d = plusDays(m, k * 7 + rnd_.nextInt(5));
                if (d > today_ || d < start) continue;
                Invoice inv;
                inv.seller = sellers[static_cast<size_t>(month + k) % sellers.size()];
                bool benzin = k == 3;
                inv.vehicle = benzin ? petrol : diesel[static_cast<size_t>(month * 3 + k) % diesel.size()];
                inv.goods = benzin ? "Benzin 95 (ólommentes)" : "Gázolaj (diesel)";
                inv.fuel = benzin ? "Benzin 95" : "Gázolaj";
                inv.date = d;
                inv.number = yearOf(d) * 10000 + (++seq);
                inv.quantity = benzin ? 40 + rnd_.nextInt(20)
                                      : (inv.vehicle->truck ? 250 + rnd_.nextInt(150) : 60 + rnd_.nextInt(60));
                inv.price = (benzin ? 468 : 492) + month * 3 + rnd_.nextInt(11) - 5;
                inv.serial = "UA/" + std::to_string(yearOf(d)) + "/" + pad(1200 + seq * 7, 5);
                invoices_.push_back(std::move(inv));
            }
        }
    }

    double fuelPrice(const Vehicle& v, Day d) const {
        const Invoice* best = nullptr;
        const Invoice* first = nullptr;
        for (const auto& i : invoices_) {
            if (i.fuel != v.fuel) continue;
            if (!first || i.date < first->date) first = &i;
            if (i.date <= d && (!best || i.date >= best->date)) best = &i;
        }
        const Invoice* use = best ? best : first;
        return use ? use->price : 0;
    }

    // Times of day between 9:01 and 9:59 are moved to 10:00: the trip form's split of such a time
    // miscounts.
    static int avoidNine(int minutes) { return minutes > 9 * 60 && minutes < 10 * 60 ? 10 * 60 : minutes; }

    // A key made as the trip form makes a group id (and the service form a visit's key): the day's
    // digits without padding, then the seconds since midnight as a Single in the Hungarian form.
    std::string newKey(Day day, int fromSecond, int spread) {
        while (true) {
            int whole = fromSecond + rnd_.nextInt(spread);
            int hundredths = 1 + rnd_.nextInt(99);
            std::string frac = pad(hundredths, 2);
            if (frac.back() == '0') frac = frac.substr(0, 1);
            std::string key = std::to_string(yearOf(day)) + std::to_string(monthOf(day)) +
                              std::to_string(dayOf(day)) + std::to_string(whole) + "," + frac;
            if (usedKeys_.insert(key).second) return key;
        }
    }

    void makeTrips() {
        Day start = windowStart();
        Day end = plusDays(today_, -1);
        static const char* outbound[] = {"Áruszállítás", "Kiszállítás", "Anyagbeszerzés", "Ügyfél látogatás"};
        const Partner& kobanya = partnerStarting("Kőbányai");
        for (auto& vp : vehicles_) {
            Vehicle& v = *vp;
            double odo = v.startKm;
            v.odometer[plusDays(start, -1)] = odo;
            std::map<int, std::string> groupOf;
            std::map<std::string, double> groupKm;
            std::optional<size_t> previous;
            for (Day d = start; d <= end; d = plusDays(d, 1)) {
                if (weekend(d)) continue;
                if (rnd_.nextDouble() >= v.activity) continue;
                auto g = groupOf.find(monthKey(d));
                if (g == groupOf.end()) g = groupOf.emplace(monthKey(d), newKey(d, 6 * 3600, 2 * 3600)).first;
                const std::string group = g->second;
                const auto& tour = v.tours[static_cast<size_t>(rnd_.nextInt(static_cast<int>(v.tours.size())))];
                std::string purpose = outbound[rnd_.nextInt(v.truck ? 2 : 4)];
                int t = 6 * 60 + 15 * rnd_.nextInt(9);
                int dayStart = t - 15;
                size_t firstOfDay = trips_.size();
                double speed = v.truck ? 58 : 66;
                for (size_t i = 1; i < tour.size(); ++i) {
                    const Route& r = routeOf(tour[i - 1], tour[i]);
                    int dep = avoidNine(t);
                    int dur = std::max(15, static_cast<int>(javaRound(r.km / speed * 60 / 5.0)) * 5);
                    int arr = avoidNine(dep + dur);
                    Trip tr;
                    tr.vehicle = &v;
                    tr.driver = v.driver;
                    tr.date = d;
                    tr.from = r.from;
                    tr.to = r.to;
                    tr.km = r.km;
                    tr.dep = dep;
                    tr.arr = arr;
                    tr.group = group;
                    bool home = r.to == "Budapest";
                    tr.partner = partnerIn(replaceAll(home ? r.from : r.to, "Budapest, ", ""));
                    if (r.to == "Budapest, Kőbánya" || r.from == "Budapest, Kőbánya") tr.partner = &kobanya;
                    tr.purpose = home ? "Telephelyre visszaút" : purpose;
                    tr.load = home ? 0 : (v.truck ? 2000 + 100 * rnd_.nextInt(60) : 150 + 50 * rnd_.nextInt(30));
                    tr.startKm = odo;
                    odo = odo + r.km + rnd_.nextInt(4);
                    tr.endKm = odo;
                    tr.litres = shown(r.km / 100 * v.norm);
                    tr.price = fuelPrice(v, d);
                    tr.groupKm = (groupKm[group] += r.km);
                    if (previous) {
                        tr.prevDate = trips_[*previous].date;
                        tr.prevArr = trips_[*previous].arr;
                    }
                    previous = trips_.size();
                    trips_.push_back(std::move(tr));
                    t = arr + 30 + 15 * rnd_.nextInt(5);
                }
                int dayEnd = trips_.back().arr + 15;
                for (size_t i = firstOfDay; i < trips_.size(); ++i) {
                    trips_[i].workStart = dayStart;
                    trips_[i].workEnd = dayEnd;
                }
                if (dayEnd - dayStart >= 8 * 60) {
                    trips_.back().allowance = Allowance;
                    trips_.back().allowanceDay = true;
                }
                v.odometer[d] = odo;
            }
            v.currentKm = odo;
        }
        std::stable_sort(trips_.begin(), trips_.end(), [](const Trip& a, const Trip& b) {
            return a.date != b.date ? a.date < b.date : a.dep < b.dep;
        });
    }

    double odometerAt(const Vehicle& v, Day d) const {
        auto it = v.odometer.upper_bound(d);
        if (it != v.odometer.begin()) return std::prev(it)->second;
        const auto& first = *v.odometer.begin();
        long daysBefore = (first.first - d).count();
        return std::max(1000.0, javaRound(first.second - static_cast<double>(daysBefore) * (v.truck ? 180 : 70)));
    }

    void makeVisits() {
        visit(0, 35, "Olajcsere, olaj- és levegőszűrő csere", 1.5, {{0, 6}, {1, 1}, {2, 1}});
        visit(1, 80, "Fékbetét és féktárcsa csere elöl", 2.5, {{5, 1}, {6, 2}});
        visit(2, 20, "Műszaki vizsgára felkészítés, izzócsere", 2.0, {{10, 2}, {13, 2}});
        visit(3, 110, "Vezérműszíj-készlet csere", 4.0, {{7, 1}, {8, 1}});
        visit(4, 60, "Olajcsere, gázolajszűrő csere", 1.5, {{0, 7}, {4, 1}});
        visit(5, 150, "Téli gumiabroncs felszerelése, futómű-beállítás", 2.0, {{12, 4}});
        visit(6, 130, "Kötelező szerviz, pollenszűrő csere", 1.0, {{0, 5}, {3, 1}});
        visit(8, 25, "Olajcsere, AdBlue utántöltés", 2.0, {{0, 12}, {9, 3}});
        visit(8, 200, "Akkumulátor csere", 0.5, {{11, 1}});
        visit(9, 95, "Fékbetét csere, pollenszűrő csere", 2.0, {{5, 1}, {3, 1}});
        visit(9, 260, "Tachográf hitelesítés", 1.0, {{14, 1}});
    }

    void visit(size_t vehicle, int daysAgo, std::string job, double hours, std::vector<std::pair<int, int>> parts) {
        Visit s;
        s.vehicle = vehicles_[vehicle].get();
        s.date = plusDays(today_, -daysAgo);
        s.job = std::move(job);
        s.hours = hours;
        s.km = odometerAt(*s.vehicle, s.date);
        s.mechanic = static_cast<int>(visits_.size() % 3);
        s.key = newKey(s.date, 7 * 3600, 8 * 3600);
        s.parts = std::move(parts);
        visits_.push_back(std::move(s));
    }

    void finishVehicles() {
        for (auto& vp : vehicles_) {
            Vehicle& v = *vp;
            std::optional<Day> lastVisit;
            for (const auto& s : visits_)
                if (s.vehicle == &v && (!lastVisit || s.date > *lastVisit)) lastVisit = s.date;
            v.lastService = lastVisit ? *lastVisit : plusDays(today_, -(100 + rnd_.nextInt(200)));
            double km = v.currentKm;
            v.inspectionKm = javaRound(km - 5000 - rnd_.nextInt(20000));
            v.oilKm = javaRound(km - 2000 - rnd_.nextInt(12000));
            v.logKm = javaRound(km - 3000 - rnd_.nextInt(15000));
            v.drivetrainKm = javaRound(km - 10000 - rnd_.nextInt(40000));
            v.timingKm = std::max(0.0, javaRound(km - 15000 - rnd_.nextInt(60000)));
            v.warned = !(v.inspection > today_) || !(v.greenCard > plusDays(today_, -WarnInsuranceCardDays)) ||
                       (v.tacho && *v.tacho < plusDays(today_, -WarnTachoCalibrationDays)) ||
                       (v.tachoPermit && *v.tachoPermit < plusDays(today_, -WarnTachoPermitDays));
        }
    }

    void makeAttachments() {
        std::vector<std::string> groups;
        for (const auto& t : trips_)
            if (std::find(groups.begin(), groups.end(), t.group) == groups.end()) groups.push_back(t.group);
        static const char* people[] = {"Dr. Fülöp Zsuzsanna", "Szőke Ödön", "Halász Bence", "Virág Dénes", "Őry Zsófia"};
        for (size_t i = 0; i < groups.size(); i += 7)
            passengers_.push_back({groups[i], {people[i % 5], people[(i + 2) % 5]}});
        int n = 0;
        for (size_t i = 0; i < groups.size(); i += 3) {
            const std::string& g = groups[i];
            const Trip* first = nullptr;
            bool abroad = false;
            for (const auto& t : trips_) {
                if (t.group != g) continue;
                if (!first) first = &t;
                abroad = abroad || t.to == "Wien";
            }
            std::vector<std::string> docs;
            ++n;
            docs.push_back("Szállítólevél SZL-" + std::to_string(yearOf(first->date)) + "/" + pad(100 + n * 13, 4));
            if (abroad) docs.push_back("CMR fuvarlevél " + first->vehicle->plate);
            documents_.push_back({g, docs});
        }
    }

    // ---------------------------------------------------------------- writing

    // Opens a file of the folder and runs `write` in one batch.
    template <class F>
    void batch(const fs::path& file, F&& write) {
        auto db = jet::Database::open(file.string());
        db->begin();
        try {
            write(*db);
            db->commit();
        } catch (...) {
            db->rollback();
            throw;
        }
    }

    void write() {
        batch(dir_ / "Torzsek.dsb", [&](jet::Database& db) { writeTorzsek(db); });
        batch(dir_ / "parameter.dsb", [&](jet::Database& db) { writeParameter(db); });
        batch(dir_ / "Kerova.dsb", [&](jet::Database& db) { writeKerova(db); });
        batch(dir_ / "betarol.mdb", [&](jet::Database& db) { writeBetarol(db); });
        batch(dir_ / "kitarol.mdb", [&](jet::Database& db) { writeKitarol(db); });
        batch(dir_ / "Regiszt.dsb", [&](jet::Database& db) {
            Rows(db, "SzervizParameter", warnings).add({{"RaklapSuly", 25.0}});
        });
        batch(dir_ / "Tartosan.dsb", [&](jet::Database& db) {
            Rows r(db, "VezetokJarmuvei", warnings);
            for (const auto& d : drivers_)
                if (!d->plate.empty()) r.add({{"VezetöID", d->id}, {"Rendszám", d->plate}});
            // stand-in drivers of two vehicles
            r.add({{"VezetöID", driverNamed("Kovács Béla").id}, {"Rendszám", std::string("MEG-318")}});
            r.add({{"VezetöID", driverNamed("Szőke Ödön").id}, {"Rendszám", std::string("JFK-903")}});
        });
        writeSiblings();
    }

    void writeTorzsek(jet::Database& db) {
        Rows(db, "Bettorzs", warnings)
            .add({{"UzNev", OperatorName},
                  {"UzIrszam", OperatorZip},
                  {"UzSzekhely", OperatorTown},
                  {"UzCim", OperatorStreet},
                  {"UzAdoszam", OperatorTax},
                  {"UzSzamlaszam", std::string("11700024-20135791-00000000")},
                  {"Uztelefon", std::string("0612621234")},
                  {"UzFax", std::string("0612621235")},
                  {"UzMobil", std::string("06309876543")},
                  {"EUAdoszam", std::string("HU14725836")},
                  {"VPID", std::string("HU00147258")},
                  {"Telephely", OperatorZip + " " + OperatorTown + ", " + OperatorStreet +
                                    " (Kőbánya, telephely és műhely)"}});
        Rows(db, "VizsgaFigyelmeztetoNap", warnings)
            .add({{"MüszakiVizsgaFigyelmeztetöNap", WarnInspectionDays},
                  {"ZöldkártyaFigyelmeztetöNap", WarnGreenCardDays},
                  {"TachográfHitelesNap", WarnTachoCalibrationDays},
                  {"TachográfOMHEngNap", WarnTachoPermitDays},
                  {"BiztosításZöldkNap", WarnInsuranceCardDays},
                  {"SzemleKilométer", 1000},
                  {"OlajcsereKilométer", 15000},
                  {"NkKarbantNaplóKilométer", 20000},
                  {"HajtásláncOlajcsereKilométer", 60000},
                  {"VezérmüÉkszijcsereKilométer", 90000}});
    }

    void writeParameter(jet::Database& db) {
        Rows(db, "Egyebek", warnings).add({{"Napidíj", Allowance}, {"NapidíjDevizanem", HUF}});
        Rows u(db, "MennyisegiEgyseg", warnings);
        for (std::string unit : {"kg", "t", "db", "l", "m3", "raklap"})
            u.add({{"MennyiségiEgység", unit}, {"Állandó", unit == "kg"}});
        fs::path sibling = dir_ / DemoSiblingFolder;
        fs::path bizonyla = dir_ / "BizonylaNext";
        fs::path iface = dir_ / "Interface";
        std::error_code ec;
        fs::create_directories(bizonyla, ec);
        if (!ec) fs::create_directories(iface, ec);
        if (ec) warnings.push_back("a mappák nem hozhatók létre: " + ec.message());
        Rows(db, "Path", warnings)
            .add({{"PolcrakPath", sibling.string()},
                  {"FogastorPath", sibling.string()},
                  {"BizonylaNextPath", bizonyla.string()},
                  {"InterfacePath", iface.string()}});
    }

    void writeKerova(jet::Database& db) {
        Rows vehicles(db, "Jarmuvek", warnings);
        for (const auto& v : vehicles_) vehicles.add(vehicleValues(*v, false));

        Rows routes(db, "UtakTavolsag", warnings);
        for (const auto& x : routes_)
            routes.add({{"Honnan", x.from}, {"Hova", x.to}, {"TávolságKm", x.km}, {"HonnanOrszág", x.fromCountry},
                        {"HovaOrszág", x.toCountry}});

        writeDrivers(db);

        Rows purposes(db, "MegnevezesTorzs", warnings);
        for (std::string s : {"Áruszállítás", "Kiszállítás", "Anyagbeszerzés", "Ügyfél látogatás",
                              "Telephelyre visszaút", "Szervizbe szállítás", "Műszaki vizsga"})
            purposes.add({{"Megnevezés", s}});

        Rows partners(db, "beraktar", warnings);
        for (const auto& p : partners_) partners.add(partnerValues(*p, "recordID") + Fields{{"Cégnév", p->name}});

        writeCountries(db);
        writeInvoices(db);
        writeTrips(db);

        Rows passengers(db, "UtakSzallitottSzemely", warnings);
        for (const auto& [g, names] : passengers_)
            for (const auto& n : names) passengers.add({{"SzállitottSzemélyNeve", n}, {"UtakCsoportAzonosito", g}});
        Rows documents(db, "UtakCsatoltOkmany", warnings);
        for (const auto& [g, docs] : documents_)
            for (const auto& x : docs) documents.add({{"CsatoltOkmány", x}, {"UtakCsoportAzonosito", g}});

        writeKilometreLog(db);
        writeService(db);
    }

    // The vehicle's columns; the first seventeen are also what an invoice copies.
    Fields vehicleValues(const Vehicle& v, bool headOnly) const {
        Fields f{{"GkFrsz", v.plate},
                 {"GkTipus", v.type},
                 {"GkForgalombahelyezve", dt(v.firstReg)},
                 {"Hengerurtartalom", v.ccm},
                 {"FogyasztásLiter100", v.norm},
                 {"GkVezetoNeve", v.driver->name},
                 {"SzervizIntervallumNap", v.serviceDays},
                 {"SzervizIntervallumKM", v.serviceKm},
                 {"MuszakiVizsgaDatum", dt(v.inspection)},
                 {"ZoldkartyaDatum", dt(v.greenCard)},
                 {"CascoHaviDija", money(v.casco)},
                 {"KotelezoHaviDija", money(v.compulsoryFee)},
                 {"recordID", v.id},
                 {"KilometerOraAllasa", v.startKm},
                 {"OnkoltsegKm", v.truck ? 215.0 : (v.norm < 7 ? 68.0 : 96.0)},
                 {"UtolsoSzervizDatum", dt(v.lastService)},
                 {"JelenlegiKmAllas", v.currentKm}};
        if (headOnly) return f;
        return f + Fields{{"PartnerID", v.ownerId},
                          {"PartnerNeve", v.ownerName},
                          {"Alvázszám", v.vin},
                          {"Motorszám", v.engineNo},
                          {"TachográfHitelesités", dt(v.tacho)},
                          {"TachoOMHEng", dt(v.tachoPermit)},
                          {"SzemleKM", v.inspectionKm},
                          {"OlajcsereKM", v.oilKm},
                          {"NköziKarbantNaploKM", v.logKm},
                          {"HajtaslancOlajcsKM", v.drivetrainKm},
                          {"VezérmüOlajcsereKM", v.timingKm},
                          {"Figyelmeztetés", v.warned},
                          {"KotelezoBiztDatum", dt(v.compulsory)},
                          {"Alvállalkozó", v.subcontractor},
                          {"NemzetkoziBiztDatum", dt(v.international)},
                          {"TuzoltoDatum", dt(v.extinguisher)}};
    }

    void writeDrivers(jet::Database& db) {
        Rows r(db, "Vezetok", warnings);
        for (const auto& d : drivers_) {
            const Vehicle* v = d->vehicleId > 0 ? vehicles_[static_cast<size_t>(d->vehicleId - 1)].get() : nullptr;
            bool sub = v && v->subcontractor;
            r.add({{"VezetöNeve", d->name},
                   {"JogositványSzáma", d->licence},
                   {"JogositványÉrvényessége", dt(d->licenceExpiry)},
                   {"Munkakör", d->post},
                   {"LakcimIrSzám", d->zip},
                   {"LakcimSzékhely", d->town},
                   {"LakcimCim", d->street},
                   {"Elérhetöség", d->contact},
                   {"Munkáltató", sub ? v->ownerName : d->employer},
                   {"MunkáltatóID", sub ? v->ownerId : 0},
                   {"Adóazonositó", d->taxId},
                   {"TAJSzám", d->taj},
                   {"SzületésiHely", d->birthPlace},
                   {"SzületésiIdö", dt(d->birthDate)},
                   {"AnyjaNeve", d->mother},
                   {"Aktiv", d->inactive},
                   {"GépkocsiFrsz", d->plate},
                   {"PartnerID", d->id},
                   {"GkID", d->vehicleId}});
        }
    }

    static Fields partnerValues(const Partner& p, const std::string& keyName) {
        return {{"BerNev", p.name},       {"BerIrszam", p.zip},       {"BerSzekhely", p.town},
                {"BerCim", p.street},     {"BerTelefon", p.phone},    {"BerFax", p.fax},
                {"BerMobil", p.mobile},   {"BerAdoszam", p.tax},      {"BerSzamlaszam", p.account},
                {keyName, p.id},          {"Kapcsolattartó", p.contact}, {"BerOrszag", p.country},
                {"UgyfelStatus", p.status}};
    }

    void writeCountries(jet::Database& db) {
        static const char* countries[][2] = {
            {"H", "Magyarország"}, {"A", "Ausztria"},      {"SK", "Szlovákia"},       {"RO", "Románia"},
            {"HR", "Horvátország"}, {"SLO", "Szlovénia"},  {"SRB", "Szerbia"},         {"UA", "Ukrajna"},
            {"D", "Németország"},  {"CZ", "Csehország"},   {"PL", "Lengyelország"},    {"I", "Olaszország"},
            {"NL", "Hollandia"},   {"F", "Franciaország"}};
        Rows r(db, "Orszagjel", warnings);
        for (const auto& c : countries) r.add({{"Országjel", std::string(c[0])}, {"Ország", std::string(c[1])}});
    }

    void writeInvoices(jet::Database& db) {
        Rows r(db, "SZAMLA", warnings);
        int n = 0;
        for (const auto& i : invoices_) {
            ++n;
            double net = javaRound(i.quantity * i.price);
            double gross = javaRound(net * 1.27);
            bool settled = i.date < plusDays(today_, -15);
            Fields tail{{"TELJDATUM", dt(i.date)},
                        {"SZML_KELTE", dt(i.date)},
                        {"ESEDEKES", dt(plusDays(i.date, 15))},
                        {"SZAMLASOR", i.number},
                        {"MEGNEVEZES", i.goods},
                        {"ETK", std::string()},
                        {"SZJ", std::string()},
                        {"AFA", 27.0},
                        {"MENNY_EGYS", std::string("l")},
                        {"MENNYISEG", static_cast<double>(i.quantity)},
                        {"NETTO_EGYS", money(i.price)},
                        {"ENGEDMENY", 0.0},
                        {"NETTO_ERTE", money(net)},
                        {"MEGJEGYZ1", "Tankolás: " + i.vehicle->plate},
                        {"MEGJEGYZ2", std::string("Üzemanyagkártyás vásárlás")},
                        {"MEGJEGYZ3", std::string()},
                        {"KIEGYENLIT", settled},
                        {"KIEGYENDAT", settled ? dt(plusDays(i.date, 12)) : jet::Value()},
                        {"KIEGYENOSZ", money(settled ? gross : 0)},
                        {"STORNO", false},
                        {"SZAMLASORS", i.serial},
                        {"PENZNEM", HUF},
                        {"TAM", std::string()},
                        {"AKCIOS", false},
                        {"Rekord", n},
                        {"ReszKiegyenlites", false},
                        {"ReszkiegyenlitesTeljOsszeg", money(0)},
                        {"VTSZ", std::string(startsWith(i.fuel, "Benzin") ? "27101245" : "27101943")}};
            r.add(partnerValues(*i.seller, "BerRecordID") + vehicleValues(*i.vehicle, true) + tail);
        }
    }

    void writeTrips(jet::Database& db) {
        Rows r(db, "Utak", warnings);
        for (const auto& t : trips_) {
            int dur = t.arr - t.dep;
            double cost = shown(t.litres * t.price);
            const Partner* p = t.partner;
            r.add({{"FRSZ", t.vehicle->plate},
                   {"GkTipus", t.vehicle->type},
                   {"GkVezetöNeve", t.driver->name},
                   {"Dátum", dt(t.date)},
                   {"Honnan", t.from},
                   {"Hova", t.to},
                   {"TávolságKm", t.km},
                   {"IndulásIdeje", timeOfDay(t.dep)},
                   {"ÉrkezésIdeje", timeOfDay(t.arr)},
                   {"ÖsszesenIdö", timeOfDay(dur)},
                   {"CsoportAzonositó", t.group},
                   {"ÖsszesenKM", t.groupKm},
                   {"Megnevezés", t.purpose},
                   {"ÁuTömege", static_cast<double>(t.load)},
                   {"MennyiségiEgység", std::string("kg")},
                   {"VezetöKezdésIdö", timeOfDay(t.workStart)},
                   {"VezetöVégezIdö", timeOfDay(t.workEnd)},
                   {"CégNév", p ? p->name : std::string()},
                   {"CégCim", p ? p->zip + " " + p->town + ", " + p->street : std::string()},
                   {"FogyasztottLiter", t.litres},
                   {"Üzemanyagár", t.price},
                   {"Üzemanyagköltség", cost},
                   {"KezdöKM", t.startKm},
                   {"ZáróKM", t.endKm},
                   {"KezdöZáró", t.endKm - t.startKm},
                   {"Napidíj", t.allowance},
                   {"NapidíjPénznem", HUF},
                   {"Napidijas", t.allowanceDay},
                   {"ElözöDátum", dt(t.prevDate)},
                   {"ElözöÉrkezés", t.prevDate ? jet::Value(timeOfDay(t.prevArr)) : jet::Value()}});
        }
    }

    void writeKilometreLog(jet::Database& db) {
        Rows r(db, "UtakKilometerNyt", warnings);
        static const std::set<std::string> logged = {"KRV-101", "MEG-318", "JFK-903", "SZO-711"};
        Day from = plusDays(today_, -75);
        for (const auto& t : trips_) {
            if (!logged.count(t.vehicle->plate) || t.date < from) continue;
            r.add({{"VezetöNeve", t.driver->name},
                   {"Dátum", dt(t.date)},
                   {"GkTipus", t.vehicle->type},
                   {"GkFrsz", t.vehicle->plate},
                   {"GkrecordID", t.vehicle->id},
                   {"KMÁllás", t.endKm},
                   {"Honnan", t.from},
                   {"Hova", t.to},
                   {"TávolságKm", t.km}});
        }
    }

    void writeService(jet::Database& db) {
        static const char* mechanics[][2] = {{"Fűzfa Gábor", "SZ01"}, {"Kőrösi Ádám", "SZ02"}, {"Ürögdi Tibor", "SZ03"}};
        Rows mech(db, "SzervizModulSzerelok", warnings);
        for (const auto& m : mechanics) mech.add({{"SzerelöNeve", std::string(m[0])}, {"SzerelöKódja", std::string(m[1])}});
        static const char* jobList[][2] = {
            {"Olajcsere és szűrőcsere", "M01"},        {"Fékbetét és féktárcsa csere", "M02"},
            {"Vezérműszíj-készlet csere", "M03"},      {"Műszaki vizsgára felkészítés", "M04"},
            {"Futómű-beállítás", "M05"},               {"Klímatöltés és -fertőtlenítés", "M06"},
            {"Gumiabroncs csere (téli/nyári)", "M07"}, {"Tachográf hitelesítés", "M08"},
            {"Akkumulátor csere", "M09"},              {"Hibakód-olvasás, diagnosztika", "M10"}};
        Rows jobs(db, "SzervizModulMunkak", warnings);
        for (const auto& j : jobList) jobs.add({{"MunkaMegnevezés", std::string(j[0])}, {"MunkaKód", std::string(j[1])}});
        Rows sv(db, "SzervizModul", warnings);
        Rows parts(db, "SzervizModulAlkatreszek", warnings);
        for (const auto& s : visits_) {
            double rate = s.vehicle->truck ? 11500 : 9500;
            double overhead = 2500;
            const auto& m = mechanics[s.mechanic];
            sv.add({{"JármüID", s.vehicle->id},
                    {"recordID", s.key},
                    {"SzerelöNeve", std::string(m[0])},
                    {"SzerelöKódja", std::string(m[1])},
                    {"Dátum", dt(s.date)},
                    {"Munkavégzés", s.job},
                    {"KmÁllás", s.km},
                    {"Óradij", rate},
                    {"Rezsióradij", overhead},
                    {"Munkaóra", s.hours},
                    {"Rezsidij", s.hours * overhead},
                    {"Munkadij", rate * s.hours},
                    {"EsedékességKM", s.km + s.vehicle->serviceKm},
                    {"Pénznem", HUF}});
            for (const auto& [article, quantity] : s.parts)
                parts.add(articleValues(articles_[static_cast<size_t>(article)], quantity) +
                          Fields{{"JármüID", s.vehicle->id}, {"recordID", s.key}});
        }
    }

    static std::string tariffName(const std::string& tariff) {
        static const std::map<std::string, std::string> names = {
            {"27101981", "Motorolaj, kenőolaj"},
            {"84212300", "Olaj- vagy üzemanyagszűrő belső égésű motorhoz"},
            {"84213100", "Légszűrő belső égésű motorhoz"},
            {"84213920", "Levegőszűrő és -tisztító, más"},
            {"68132000", "Fékbetét azbeszttartalom nélkül"},
            {"87083091", "Tárcsafék alkatrészei"},
            {"40103200", "Végtelenített hajtószíj"},
            {"38200000", "Fagyálló készítmény"},
            {"31021010", "Karbamid vizes oldatban"},
            {"85392130", "Volfrám-halogén izzólámpa"},
            {"85071020", "Ólomakkumulátor dugattyús motor indításához"},
            {"40112010", "Új gumiabroncs autóbuszhoz, tehergépjárműhöz"},
            {"85129090", "Ablaktörlő alkatrésze"}};
        auto it = names.find(tariff);
        return it == names.end() ? std::string() : it->second;
    }

    static Fields articleValues(const Article& a, double quantity) {
        double gross = javaRound(a.net * 1.27);
        return {{"cikkszám", a.code},
                {"megnevezés", a.name},
                {"vámtarifaszám", a.tariff},
                {"mennyiségi egység", a.unit},
                {"hiba", 0},
                {"tarifális megnevezés", tariffName(a.tariff)},
                {"flag", false},
                {"NettoSuly", 0.0},
                {"ErzekenyAru", std::string()},
                {"ARUCSOPORT", a.group},
                {"NETTO", a.net},
                {"AFA", 27.0},
                {"MENNYISEG", quantity},
                {"BRUTTO", gross},
                {"GONGYOLEG", std::string("Nem")},
                {"SZJ", std::string(a.service ? "50.20.11" : "")},
                {"PENZNEM", HUF},
                {"TAM", std::string()},
                {"BESZNETTO", a.purchase},
                {"ARRESSZAZA", javaRound((a.net / a.purchase - 1) * 10000) / 100.0},
                {"MEGJEGYZES", std::string(a.service ? "Szolgáltatás" : "Alkatrész")},
                {"ARUKOD", head3Upper(a.group)},
                {"BruttoSuly", 0.0},
                {"Származó", std::string("NEM")},
                {"Tárhely1", a.service ? std::string() : a.shelf},
                {"Azonosító", a.id},
                {"FolyamatosTelj", false},
                {"DarabszámCsomagban", 1.0}};
    }

    void writeBetarol(jet::Database& db) {
        Rows r(db, "Cikkszám", warnings);
        for (const auto& a : articles_) {
            r.add(articleValues(a, a.stock) +
                  Fields{{"Szorzó", javaRound(a.net / a.purchase * 10000) / 10000.0},
                         {"VezetöFizetés", 0.0},
                         {"TávolságKM", 0.0},
                         {"Különjárat", false},
                         {"Számlázható", true},
                         {"Aktiv", false},  // "NEM aktív" unticked: the article is in use
                         {"BIZONYLA", true},
                         {"TARTOSAN", false},
                         {"KEROVA", true},
                         {"POLCRAKW", !a.service},
                         {"FOGASTOR", false}});
        }
        Rows t(db, "Vámtarifaszám", warnings);
        int id = 0;
        std::set<std::string> done;
        int year = yearOf(today_);
        for (const auto& a : articles_) {
            if (a.tariff.empty() || !done.insert(a.tariff).second) continue;
            t.add({{"Vámtarifaszám", a.tariff},
                   {"Érvényesség dátumtól", dt(Day(std::chrono::year(year - 3) / January / 1))},
                   {"Érvényesség dátumig", dt(Day(std::chrono::year(year + 2) / December / 31))},
                   {"VamtariafaszámÉrvID", ++id},
                   {"Tarifális megnevezés", tariffName(a.tariff)},
                   {"KulonosMertekegyseg", std::string(a.unit == "l" ? "l" : "")}});
        }
        writeCountries(db);
    }

    void writeKitarol(jet::Database& db) {
        struct Customer {
            const char *name, *zip, *town, *street, *contact;
            int due;
            bool inactive, subcontractor;
        };
        static const Customer customers[] = {
            {"Győri Csavar- és Lemezgyártó Kft.", "9027", "Győr", "Fehérvári út 18.", "Németh Gábor", 30, false, false},
            {"Kőbányai Sörraktár Kft.", "1106", "Budapest", "Maglódi út 47.", "Hegedűs Anna", 15, false, false},
            {"Egri Borház és Pincészet Bt.", "3300", "Eger", "Szépasszonyvölgy utca 21.", "Kelemen Dóra", 8, false, false},
            {"Pécsi Kesztyűgyártó Kft.", "7630", "Pécs", "Hengermalom utca 3.", "Török Ildikó", 30, false, false},
            {"Fűzfa Bútorgyártó Kft.", "1105", "Budapest", "Fűzfa utca 3.", "Szőke Ödönné", 15, false, false},
            {"Hűtő-Szerviz Bt.", "6724", "Szeged", "Londoni körút 12.", "Major Győző", 8, true, false},
            {"Szőke és Fia Fuvarozó Bt.", "2040", "Budaörs", "Szabadság út 55.", "Szőke Ödön", 15, false, true}};
        Rows r(db, "Címzett", warnings);
        int id = 0;
        for (const auto& c : customers) {
            ++id;
            std::string zip = c.zip, town = c.town, street = c.street;
            std::string area = digits(2);
            std::string phone = "06-" + area + "-" + digits(6);
            std::string mobile = "06-30-" + digits(7);
            std::string taxHead = digits(8);
            std::string tax = taxHead + "-2-" + digits(2);
            std::string account = "11773016-" + digits(8);
            r.add({{"recordID", id},
                   {"CimNev", std::string(c.name)},
                   {"CimIrszam", zip},
                   {"CimSzekhely", town},
                   {"CimCim", street},
                   {"CimTelefon", phone},
                   {"CimFax", std::string()},
                   {"CimMobil", mobile},
                   {"CimAdoszam", tax},
                   {"CimSzamlaszam", account},
                   {"Kapcsolattartó", std::string(c.contact)},
                   {"SzamlazasSzekhelye", town},
                   {"SzamlazasIrszama", zip},
                   {"SzamlazasCime", street},
                   {"VevoKodja", "V" + pad(id, 3)},
                   {"JutalekJel", std::string()},
                   {"FizetésiHatáridö", c.due},
                   {"KézhezvételNap", 3},
                   {"KapcsolattartóCime", zip + " " + town + ", " + street},
                   {"Megjegyzés", std::string(c.inactive ? "Megszűnt együttműködés" : "")},
                   {"FolyamatosTelj", false},
                   {"NemAktiv", c.inactive},
                   {"KVTDÁtvállalás", false},
                   {"Különjárat", id % 3 == 0},
                   {"Munkásjárat", false},
                   {"Alvállalkozó", c.subcontractor},
                   {"PénzforgalmiElszámolás", false},
                   {"CimOrszag", std::string("H")}});
        }
    }

    // The warehouse of the sibling products: issues of parts to the vehicles.
    void writeSiblings() {
        fs::path sibling = dir_ / DemoSiblingFolder;
        init(sibling, true);
        const char* files[] = {"Polcrak.dsb", "Fogastor.DSB"};
        for (int shift = 0; shift < 2; ++shift) {
            batch(sibling / files[shift], [&](jet::Database& db) {
                Rows r(db, "KIVET", warnings);
                for (int i = 0; i < 6; ++i) {
                    const Article& a = articles_[static_cast<size_t>((i * 2 + shift) % 14)];
                    const Vehicle& v = *vehicles_[static_cast<size_t>(i + shift * 3) % vehicles_.size()];
                    double qty = a.unit == "l" ? 5 + i : 1 + (i % 2);
                    double net = a.net * qty;
                    r.add({{"MEGNEVEZES", a.name},
                           {"MENNYISEG", qty},
                           {"MENNY_EGYS", a.unit},
                           {"NETTO", a.net},
                           {"AFA", 27.0},
                           {"ENGEDMENY", 0.0},
                           {"ARUKOD", head3Upper(a.group)},
                           {"POLCSZAM", a.shelf},
                           {"ITJ", std::string()},
                           {"KIDATUM", dt(plusDays(today_, -(3 + i * 11 + shift * 5)))},
                           {"VEVONEV", OperatorName},
                           {"VEVOIRSZ", OperatorZip},
                           {"VEVOSZEKH", OperatorTown},
                           {"VEVOCIM", OperatorStreet},
                           {"VEVOADOSZ", OperatorTax},
                           {"GKTIPUS", v.type},
                           {"SZAMLAZVA", std::string("N")},
                           {"Cikkszám", a.code},
                           {"Devizanem", HUF},
                           {"BRUTTO", javaRound(net * 1.27)},
                           {"BESZERZAR", a.purchase},
                           {"AFABESZ", 27.0},
                           {"ARRES", javaRound((a.net - a.purchase) * qty)},
                           {"SzukségesMenny", qty},
                           {"BeépülöAnyag", true},
                           {"Készletezve", true},
                           {"FolyamatosTelj", false}});
                }
            });
        }
    }
};

}  // namespace

DemoResult createDemo(const fs::path& dir, sys_days today) {
    DemoResult result;
    fs::path abs = fs::absolute(dir).lexically_normal();
    if (!findInFolder(abs, {"Kerova.dsb"}).empty()) return result;
    init(abs, false);
    Demo demo(abs, today);
    demo.build();
    result.created = true;
    result.warnings = std::move(demo.warnings);
    return result;
}

DemoResult createDemo(const fs::path& dir) {
    std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    sys_days today = std::chrono::year(local.tm_year + 1900) / (local.tm_mon + 1) / local.tm_mday;
    return createDemo(dir, today);
}

void growTrips(const std::filesystem::path& kerovaDsb, int rows) {
    auto db = jet::Database::open(kerovaDsb.string());
    jet::Table& t = db->table("Utak");
    std::vector<jet::Row> demo;
    t.scan([&](jet::RowId, const jet::Row& r) {
        demo.push_back(r);
        return true;
    });
    if (demo.empty()) throw std::runtime_error("the company has no trips to copy");
    size_t dateColumn = SIZE_MAX;
    for (size_t i = 0; i < t.def().columns.size(); ++i)
        if (t.def().columns[i].name == "Dátum") dateColumn = i;
    db->begin();
    for (int n = int(t.rowCount()), copy = 1; n < rows; ++copy) {
        for (const auto& r : demo) {
            if (n++ >= rows) break;
            jet::Row row = r;
            if (dateColumn != SIZE_MAX)
                if (auto* d = std::get_if<jet::DateTime>(&row[dateColumn])) d->days -= copy;
            t.insert(std::move(row));
        }
    }
    db->commit();
}

}  // namespace company
