package kerova.cli;

import java.io.IOException;
import java.math.BigDecimal;
import java.math.MathContext;
import java.math.RoundingMode;
import java.nio.file.Files;
import java.nio.file.Path;
import java.time.DayOfWeek;
import java.time.LocalDate;
import java.time.LocalDateTime;
import java.time.YearMonth;
import java.time.temporal.ChronoUnit;
import java.util.ArrayList;
import java.util.Collections;
import java.util.HashMap;
import java.util.HashSet;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;
import java.util.Random;
import java.util.Set;
import java.util.TreeMap;
import java.util.stream.Stream;
import kerova.core.db.AccessFile;
import kerova.core.db.CompanyFolder;
import kerova.core.db.DaoException;
import kerova.core.db.Database;
import kerova.core.db.Recordset;
import kerova.core.vb.VbClock;

/**
 * {@code kerova demo}: a sample company with realistic Hungarian data (DESIGN.md, "Company folders
 * and tools"). The folder gets every file of the catalogue ({@link CompanyFolder#init}) and then:
 * the operator, the parameters, ten vehicles with some deadlines due, drivers, routes between
 * Hungarian towns, partners, fuel invoices, some months of trips with their log-sheet groups, a
 * kilometre log, service visits with parts, articles, countries, customers, and a small warehouse
 * (sibling files in the subfolder {@code Raktar}, named by table {@code Path}).
 *
 * <p>Every date is relative to today ({@link VbClock#date()}), and the random choices come from a
 * fixed seed, so the same day gives the same demo. Columns are set by name; a column the catalogue
 * lacks is skipped and reported on stderr (and in {@link #warnings()}). Each file is written as one
 * unsynced batch with one flush at its end.
 *
 * <p>The deadlines are chosen so that the main form's reminders have something to say: two vehicles
 * have a technical inspection that ran out more than {@code MüszakiVizsgaFigyelmeztetöNap} days ago
 * (Part 1.2, reminder 1), one truck has a tachograph calibration and an OMH permit older than their
 * limits, and one van an expired green card. Part 1.2's reminders 2 to 4 test columns that
 * {@code Jarmuvek} doesn't have, so on these files only reminder 1 can find rows; the other dates are
 * for the vehicle form's own checks (Part 2.1) and the lists. The vehicles with a due date also carry
 * {@code Figyelmeztetés}, so the main form's warned-vehicles grid is filled from the start.
 */
public final class DemoCompany {

    /** The seed of every random choice: the demo is the same on every run of the same day. */
    public static final long SEED = 20_020_611L;

    /** The folder of the sibling products' files, under the company folder. */
    public static final String SIBLING_FOLDER = "Raktar";

    private static final List<String> WARNINGS = Collections.synchronizedList(new ArrayList<>());

    // --- the warning limits of VizsgaFigyelmeztetoNap (ordinal order of Part 1.5) ---
    static final int WARN_INSPECTION_DAYS = 30;
    static final int WARN_GREEN_CARD_DAYS = 30;
    static final int WARN_TACHO_CALIBRATION_DAYS = 30;
    static final int WARN_TACHO_PERMIT_DAYS = 30;
    static final int WARN_INSURANCE_CARD_DAYS = 15;

    private static final double ALLOWANCE = 5000;
    private static final String HUF = "HUF";

    private final Path dir;
    private final LocalDate today;
    private final Random rnd = new Random(SEED);

    private final List<Partner> partners = new ArrayList<>();
    private final List<Driver> drivers = new ArrayList<>();
    private final List<Vehicle> vehicles = new ArrayList<>();
    private final Map<String, Route> routes = new LinkedHashMap<>();
    private final List<Invoice> invoices = new ArrayList<>();
    private final List<Trip> trips = new ArrayList<>();
    private final List<Article> articles = new ArrayList<>();
    private final List<Visit> visits = new ArrayList<>();
    private final Set<String> usedKeys = new HashSet<>();
    private final Map<String, List<String>> passengers = new LinkedHashMap<>();
    private final Map<String, List<String>> documents = new LinkedHashMap<>();

    private static final String OPERATOR_NAME = "Kőbányai Fuvarozó és Szerviz Kft.";
    private static final String OPERATOR_ZIP = "1105";
    private static final String OPERATOR_TOWN = "Budapest";
    private static final String OPERATOR_STREET = "Fűzfa utca 12.";
    private static final String OPERATOR_TAX = "14725836242";

    private DemoCompany(Path dir) {
        this.dir = dir;
        this.today = VbClock.date();
    }

    /**
     * Creates the sample company in {@code dir} unless the folder already has a {@code Kerova.dsb}
     * (matched without regard to case), in which case nothing is touched.
     */
    public static void createIfAbsent(Path dir) {
        Path abs = dir.toAbsolutePath().normalize();
        if (hasFile(abs, "Kerova.dsb")) {
            return;
        }
        CompanyFolder.init(abs, false);
        new DemoCompany(abs).build();
    }

    /** The columns and values that the last runs had to skip (also printed on stderr). */
    public static List<String> warnings() {
        synchronized (WARNINGS) {
            return List.copyOf(WARNINGS);
        }
    }

    private static boolean hasFile(Path dir, String name) {
        if (!Files.isDirectory(dir)) {
            return false;
        }
        try (Stream<Path> s = Files.list(dir)) {
            return s.anyMatch(p -> p.getFileName().toString().equalsIgnoreCase(name) && Files.isRegularFile(p));
        } catch (IOException e) {
            return false;
        }
    }

    private static void warn(String message) {
        WARNINGS.add(message);
        System.err.println("DemoCompany: " + message);
    }

    // =====================================================================================
    // building the model
    // =====================================================================================

    private void build() {
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

    private void makePartners() {
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

    private void partner(String name, String zip, String town, String street, String contact, String country,
            boolean fuel) {
        Partner p = new Partner();
        p.id = partners.size() + 1;
        p.name = name;
        p.zip = zip;
        p.town = town;
        p.street = street;
        p.contact = contact;
        p.country = country;
        p.fuel = fuel;
        p.phone = country.equals("H")
                ? "06" + (town.equals("Budapest") ? "1" + digits(7) : digits(2) + digits(6))
                : "00431" + digits(7);
        p.fax = p.phone.substring(0, p.phone.length() - 2) + "99";
        p.mobile = "0630" + digits(7);
        p.tax = country.equals("H") ? digits(8) + "2" + (rnd.nextBoolean() ? "42" : "13") : "ATU" + digits(8);
        p.account = country.equals("H") ? "1170" + digits(4) + digits(8) + "00000000" : "AT61" + digits(16);
        p.status = String.valueOf(fuel ? 2 : 1);
        partners.add(p);
    }

    private Partner partnerIn(String town) {
        for (Partner p : partners) {
            if (!p.fuel && p.town.equals(town) && !p.name.startsWith("Szőke")) {
                return p;
            }
        }
        return null;
    }

    private void makeRoutes() {
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

    private void route(String a, String b, double km) {
        route(a, b, km, "H", "H");
    }

    private void route(String a, String b, double km, String ca, String cb) {
        routes.put(a + "|" + b, new Route(a, b, km, ca, cb));
        routes.put(b + "|" + a, new Route(b, a, km, cb, ca));
    }

    private Route routeOf(String a, String b) {
        Route r = routes.get(a + "|" + b);
        if (r == null) {
            throw new IllegalStateException("no route " + a + " - " + b);
        }
        return r;
    }

    private void makeDrivers() {
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
        Driver retired = driver("Fekete Lőrinc", "gépkocsivezető", "1105", "Budapest", "Szőlő utca 40.", "Bíró Magdolna", "Szeged");
        retired.inactive = true;
        retired.licenceExpiry = today.minusDays(120);
    }

    private Driver driver(String name, String post, String zip, String town, String street, String mother,
            String birthPlace) {
        Driver d = new Driver();
        d.id = drivers.size() + 1;
        d.name = name;
        d.post = post;
        d.zip = zip;
        d.town = town;
        d.street = street;
        d.mother = mother;
        d.birthPlace = birthPlace;
        d.licence = letters(2) + digits(6);
        d.licenceExpiry = today.plusDays(200 + rnd.nextInt(3000));
        d.birthDate = today.minusYears(24 + rnd.nextInt(36)).minusDays(rnd.nextInt(365));
        d.taxId = "8" + digits(9);
        d.taj = digits(3) + " " + digits(3) + " " + digits(3);
        d.contact = "06-30-" + digits(3) + "-" + digits(4);
        d.employer = OPERATOR_NAME;
        drivers.add(d);
        return d;
    }

    private Driver driverNamed(String name) {
        return drivers.stream().filter(d -> d.name.equals(name)).findFirst().orElseThrow();
    }

    private void makeVehicles() {
        Vehicle v;
        v = vehicle("KRV-101", "Ford Transit 2.2 TDCi", 2198, 8.9, "Kovács Béla", 6, 148_300, "WF0XXXTTGX", "DRRS");
        v.tours = tours("Győr", "Székesfehérvár", "Kecskemét", "Eger", "Székesfehérvár+Győr", "Kőbánya");
        v.activity = 0.30;
        v = vehicle("LHZ-245", "Volkswagen Crafter 2.0 TDI", 1968, 9.5, "Szőke Ödön", 4, 96_400, "WV1ZZZSYZJ", "CKTC");
        v.tours = tours("Szeged", "Kecskemét+Szeged", "Pécs", "Kecskemét");
        v.activity = 0.28;
        v = vehicle("MEG-318", "Iveco Daily 35S14", 2998, 11.2, "Horváth Zoltán", 8, 212_750, "ZCFC35A00H", "F1CFL");
        v.inspection = today.minusDays(45); // reminder 1 of Part 1.2
        v.tours = tours("Miskolc", "Miskolc+Eger", "Eger", "Debrecen");
        v.activity = 0.25;
        v = vehicle("NTR-472", "Mercedes-Benz Sprinter 316 CDI", 2143, 10.1, "Tóth Gyula", 7, 174_020, "WDB9066331", "OM651");
        v.tours = tours("Debrecen+Nyíregyháza", "Debrecen", "Nyíregyháza", "Kecskemét");
        v.activity = 0.26;
        v = vehicle("PRS-539", "Renault Master 2.3 dCi", 2298, 9.8, "Varga Tünde", 5, 121_880, "VF1MA000X5", "M9TB8");
        v.greenCard = today.minusDays(20); // the insurance card has run out
        v.tours = tours("Pécs", "Székesfehérvár", "Győr", "Kőbánya");
        v.activity = 0.24;
        v = vehicle("RKB-604", "Opel Vivaro 1.6 CDTI", 1598, 7.6, "Molnár Győző", 5, 88_150, "W0LJ7B6A0G", "R9MA4");
        v.inspection = today.minusDays(10); // ran out ten days ago: the vehicle form marks it
        v.tours = tours("Kecskemét", "Eger", "Székesfehérvár", "Kőbánya");
        v.activity = 0.22;
        v = vehicle("SZO-711", "Škoda Octavia Combi 1.6 TDI", 1598, 5.4, "Kiss Ferenc", 3, 63_400, "TMBJG7NE4L", "DDYA");
        v.tours = tours("Székesfehérvár", "Kecskemét", "Eger", "Győr", "Kőbánya");
        v.activity = 0.20;
        v = vehicle("TGY-826", "Suzuki Vitara 1.6", 1586, 6.9, "Balogh Endre", 4, 41_270, "TSMLYE21S0", "M16A");
        v.fuel = "Benzin 95";
        v.tours = tours("Kőbánya", "Székesfehérvár", "Kecskemét");
        v.activity = 0.12;
        v = vehicle("JFK-903", "MAN TGL 12.250", 6871, 19.5, "Lukács Dezső", 9, 386_900, "WMAN08ZZ3J", "D0836");
        v.tacho = today.minusDays(50); // older than today minus 30 days
        v.tachoPermit = today.minusDays(40);
        v.tours = tours("Győr+Wien", "Wien", "Debrecen+Nyíregyháza", "Szeged", "Miskolc");
        v.activity = 0.30;
        v.truck = true;
        v = vehicle("HVG-158", "DAF LF 45.220", 6700, 21.0, "Nagy Ernő", 11, 452_300, "XLRAE45CE0", "FR136");
        v.inspection = today.minusDays(75); // reminder 1 of Part 1.2
        v.tacho = today.plusDays(150);
        v.tachoPermit = today.plusDays(300);
        v.tours = tours("Pécs", "Pécs+Szeged", "Miskolc+Eger", "Wien");
        v.activity = 0.22;
        v.truck = true;
        Partner owner = partners.stream().filter(p -> p.name.startsWith("Szőke és Fia")).findFirst().orElseThrow();
        v.ownerId = owner.id;
        v.ownerName = owner.name;
        v.subcontractor = true;
    }

    private Vehicle vehicle(String plate, String type, double ccm, double norm, String driver, int age, double km,
            String vinPrefix, String enginePrefix) {
        Vehicle v = new Vehicle();
        v.id = vehicles.size() + 1;
        v.plate = plate;
        v.type = type;
        v.ccm = ccm;
        v.norm = norm;
        v.driver = driverNamed(driver);
        v.driver.plate = plate;
        v.driver.vehicleId = v.id;
        v.firstReg = today.minusYears(age).minusDays(rnd.nextInt(300));
        v.startKm = km;
        v.serviceDays = 365;
        v.serviceKm = ccm > 5000 ? 40_000 : 30_000;
        v.inspection = today.plusDays(40 + rnd.nextInt(600));
        v.greenCard = today.plusDays(30 + rnd.nextInt(300));
        v.compulsory = today.plusDays(20 + rnd.nextInt(330));
        v.international = today.plusDays(60 + rnd.nextInt(300));
        v.extinguisher = today.plusDays(30 + rnd.nextInt(700));
        v.casco = ccm > 5000 ? 38_500 : 14_000 + 500 * rnd.nextInt(12);
        v.compulsoryFee = ccm > 5000 ? 16_900 : 5_200 + 100 * rnd.nextInt(30);
        v.ownerId = 0;
        v.ownerName = OPERATOR_NAME;
        v.vin = (vinPrefix + "0123456789").substring(0, 10) + letters(1) + digits(6);
        v.engineNo = enginePrefix + digits(7);
        v.fuel = "Gázolaj";
        vehicles.add(v);
        return v;
    }

    /** Tours from the site in Budapest and back; "A+B" visits A, then B. */
    private List<List<String>> tours(String... specs) {
        List<List<String>> out = new ArrayList<>();
        for (String s : specs) {
            List<String> stops = new ArrayList<>();
            stops.add("Budapest");
            for (String x : s.split("\\+")) {
                stops.add(x.equals("Kőbánya") ? "Budapest, Kőbánya" : x);
            }
            stops.add("Budapest");
            for (int i = 1; i < stops.size(); i++) {
                routeOf(stops.get(i - 1), stops.get(i)); // fails early on a missing leg
            }
            out.add(stops);
        }
        return out;
    }

    private void makeArticles() {
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
        Article t = article("SZ-TACHO", "Tachográf hitelesítés (szolgáltatás)", "alk", "", 38000, "Szolgáltatás", 0);
        t.service = true;
        Article m = article("SZ-MUSZAKI", "Műszaki vizsga ügyintézés (szolgáltatás)", "alk", "", 25000, "Szolgáltatás", 0);
        m.service = true;
    }

    private Article article(String code, String name, String unit, String tariff, double net, String group, double stock) {
        Article a = new Article();
        a.id = articles.size() + 1;
        a.code = code;
        a.name = name;
        a.unit = unit;
        a.tariff = tariff;
        a.net = net;
        a.group = group;
        a.stock = stock;
        a.purchase = Math.round(net * 0.75);
        a.shelf = (char) ('A' + rnd.nextInt(4)) + "-" + (10 + rnd.nextInt(20)) + "-" + (1 + rnd.nextInt(5));
        articles.add(a);
        return a;
    }

    private LocalDate windowStart() {
        return today.withDayOfMonth(1).minusMonths(4);
    }

    private void makeInvoices() {
        LocalDate start = windowStart().minusDays(10);
        List<Partner> sellers = partners.stream().filter(p -> p.fuel).toList();
        List<Vehicle> diesel = vehicles.stream().filter(v -> !v.fuel.startsWith("Benzin")).toList();
        Vehicle petrol = vehicles.stream().filter(v -> v.fuel.startsWith("Benzin")).findFirst().orElseThrow();
        int seq = 0;
        int month = 0;
        for (LocalDate m = start.withDayOfMonth(1); !m.isAfter(today); m = m.plusMonths(1), month++) {
            for (int k = 0; k < 4; k++) {
                LocalDate d = m.plusDays(k * 7L + rnd.nextInt(5));
                if (d.isAfter(today) || d.isBefore(start)) {
                    continue;
                }
                Invoice inv = new Invoice();
                inv.seller = sellers.get((month + k) % sellers.size());
                boolean benzin = k == 3;
                inv.vehicle = benzin ? petrol : diesel.get((month * 3 + k) % diesel.size());
                inv.goods = benzin ? "Benzin 95 (ólommentes)" : "Gázolaj (diesel)";
                inv.fuel = benzin ? "Benzin 95" : "Gázolaj";
                inv.date = d;
                inv.number = d.getYear() * 10_000 + (++seq);
                inv.quantity = benzin ? 40 + rnd.nextInt(20) : (inv.vehicle.truck ? 250 + rnd.nextInt(150) : 60 + rnd.nextInt(60));
                inv.price = (benzin ? 468 : 492) + month * 3 + rnd.nextInt(11) - 5;
                inv.serial = "UA/" + d.getYear() + "/" + String.format("%05d", 1200 + seq * 7);
                invoices.add(inv);
            }
        }
    }

    private double fuelPrice(Vehicle v, LocalDate d) {
        Invoice best = null;
        Invoice first = null;
        for (Invoice i : invoices) {
            if (!i.fuel.equals(v.fuel)) {
                continue;
            }
            if (first == null || i.date.isBefore(first.date)) {
                first = i;
            }
            if (!i.date.isAfter(d) && (best == null || !i.date.isBefore(best.date))) {
                best = i;
            }
        }
        Invoice use = best != null ? best : first;
        return use == null ? 0 : use.price;
    }

    private void makeTrips() {
        LocalDate start = windowStart();
        LocalDate end = today.minusDays(1);
        String[] outbound = {"Áruszállítás", "Kiszállítás", "Anyagbeszerzés", "Ügyfél látogatás"};
        for (Vehicle v : vehicles) {
            double odo = v.startKm;
            v.odometer.put(start.minusDays(1), odo);
            Map<YearMonth, String> groupOf = new HashMap<>();
            Map<String, Double> groupKm = new HashMap<>();
            Trip previous = null;
            for (LocalDate d = start; !d.isAfter(end); d = d.plusDays(1)) {
                if (d.getDayOfWeek() == DayOfWeek.SATURDAY || d.getDayOfWeek() == DayOfWeek.SUNDAY) {
                    continue;
                }
                if (rnd.nextDouble() >= v.activity) {
                    continue;
                }
                final LocalDate day = d;
                String group = groupOf.computeIfAbsent(YearMonth.from(d), ym -> newKey(day, 6 * 3600, 2 * 3600));
                List<String> tour = v.tours.get(rnd.nextInt(v.tours.size()));
                String purpose = outbound[rnd.nextInt(v.truck ? 2 : outbound.length)];
                int t = 6 * 60 + 15 * rnd.nextInt(9);
                int dayStart = t - 15;
                List<Trip> day1 = new ArrayList<>();
                double speed = v.truck ? 58 : 66;
                for (int i = 1; i < tour.size(); i++) {
                    Route r = routeOf(tour.get(i - 1), tour.get(i));
                    int dep = avoidNine(t);
                    int dur = Math.max(15, (int) Math.round(r.km / speed * 60 / 5.0) * 5);
                    int arr = avoidNine(dep + dur);
                    Trip tr = new Trip();
                    tr.vehicle = v;
                    tr.driver = v.driver;
                    tr.date = d;
                    tr.from = r.from;
                    tr.to = r.to;
                    tr.km = r.km;
                    tr.dep = dep;
                    tr.arr = arr;
                    tr.group = group;
                    boolean home = r.to.equals("Budapest");
                    Partner client = partnerIn(home ? r.from.replace("Budapest, ", "") : r.to.replace("Budapest, ", ""));
                    if (r.to.equals("Budapest, Kőbánya") || r.from.equals("Budapest, Kőbánya")) {
                        client = partners.stream().filter(p -> p.name.startsWith("Kőbányai")).findFirst().orElseThrow();
                    }
                    tr.partner = client;
                    tr.purpose = home ? "Telephelyre visszaút" : purpose;
                    tr.load = home ? 0 : (v.truck ? 2000 + 100 * rnd.nextInt(60) : 150 + 50 * rnd.nextInt(30));
                    tr.startKm = odo;
                    odo = odo + r.km + rnd.nextInt(4);
                    tr.endKm = odo;
                    tr.litres = shown(r.km / 100 * v.norm);
                    tr.price = fuelPrice(v, d);
                    double total = groupKm.merge(group, r.km, Double::sum);
                    tr.groupKm = total;
                    if (previous != null) {
                        tr.prevDate = previous.date;
                        tr.prevArr = previous.arr;
                    }
                    previous = tr;
                    day1.add(tr);
                    trips.add(tr);
                    t = arr + 30 + 15 * rnd.nextInt(5);
                }
                int dayEnd = day1.get(day1.size() - 1).arr + 15;
                for (Trip tr : day1) {
                    tr.workStart = dayStart;
                    tr.workEnd = dayEnd;
                }
                Trip last = day1.get(day1.size() - 1);
                if (dayEnd - dayStart >= 8 * 60) {
                    last.allowance = ALLOWANCE;
                    last.allowanceDay = true;
                }
                v.odometer.put(d, odo);
            }
            v.currentKm = odo;
        }
        trips.sort((a, b) -> {
            int c = a.date.compareTo(b.date);
            return c != 0 ? c : Integer.compare(a.dep, b.dep);
        });
    }

    /** Times of day between 9:01 and 9:59 are moved to 10:00: Part 3.2's split of such a time miscounts. */
    private static int avoidNine(int minutes) {
        return minutes > 9 * 60 && minutes < 10 * 60 ? 10 * 60 : minutes;
    }

    /**
     * A key made as Part 3.1 makes a group id (and Part 6.1 a visit's key): the day's digits without
     * padding, then the seconds since midnight as a single-precision number in the Hungarian form.
     */
    private String newKey(LocalDate day, int fromSecond, int spread) {
        while (true) {
            int whole = fromSecond + rnd.nextInt(spread);
            int hundredths = 1 + rnd.nextInt(99);
            String frac = String.format("%02d", hundredths);
            if (frac.endsWith("0")) {
                frac = frac.substring(0, 1);
            }
            String key = "" + day.getYear() + day.getMonthValue() + day.getDayOfMonth() + whole + "," + frac;
            if (usedKeys.add(key)) {
                return key;
            }
        }
    }

    private double odometerAt(Vehicle v, LocalDate d) {
        Map.Entry<LocalDate, Double> e = v.odometer.floorEntry(d);
        if (e != null) {
            return e.getValue();
        }
        LocalDate first = v.odometer.firstKey();
        long days = ChronoUnit.DAYS.between(d, first);
        return Math.max(1000, Math.round(v.odometer.firstEntry().getValue() - days * (v.truck ? 180 : 70)));
    }

    private void makeVisits() {
        visit(0, 35, "Olajcsere, olaj- és levegőszűrő csere", 1.5, 0, 6, 1, 1, 2, 1);
        visit(1, 80, "Fékbetét és féktárcsa csere elöl", 2.5, 5, 1, 6, 2);
        visit(2, 20, "Műszaki vizsgára felkészítés, izzócsere", 2.0, 10, 2, 13, 2);
        visit(3, 110, "Vezérműszíj-készlet csere", 4.0, 7, 1, 8, 1);
        visit(4, 60, "Olajcsere, gázolajszűrő csere", 1.5, 0, 7, 4, 1);
        visit(5, 150, "Téli gumiabroncs felszerelése, futómű-beállítás", 2.0, 12, 4);
        visit(6, 130, "Kötelező szerviz, pollenszűrő csere", 1.0, 0, 5, 3, 1);
        visit(8, 25, "Olajcsere, AdBlue utántöltés", 2.0, 0, 12, 9, 3);
        visit(8, 200, "Akkumulátor csere", 0.5, 11, 1);
        visit(9, 95, "Fékbetét csere, pollenszűrő csere", 2.0, 5, 1, 3, 1);
        visit(9, 260, "Tachográf hitelesítés", 1.0, 14, 1);
    }

    /** A visit: vehicle index, days ago, job, hours, then pairs of article index and quantity. */
    private void visit(int vehicle, int daysAgo, String job, double hours, int... parts) {
        Visit s = new Visit();
        s.vehicle = vehicles.get(vehicle);
        s.date = today.minusDays(daysAgo);
        s.job = job;
        s.hours = hours;
        s.km = odometerAt(s.vehicle, s.date);
        s.mechanic = visits.size() % 3;
        s.key = newKey(s.date, 7 * 3600, 8 * 3600);
        for (int i = 0; i + 1 < parts.length; i += 2) {
            s.parts.add(new int[] {parts[i], parts[i + 1]});
        }
        visits.add(s);
    }

    private void finishVehicles() {
        for (Vehicle v : vehicles) {
            LocalDate last = null;
            for (Visit s : visits) {
                if (s.vehicle == v && (last == null || s.date.isAfter(last))) {
                    last = s.date;
                }
            }
            v.lastService = last != null ? last : today.minusDays(100 + rnd.nextInt(200));
            double km = v.currentKm;
            v.inspectionKm = Math.round(km - 5_000 - rnd.nextInt(20_000));
            v.oilKm = Math.round(km - 2_000 - rnd.nextInt(12_000));
            v.logKm = Math.round(km - 3_000 - rnd.nextInt(15_000));
            v.drivetrainKm = Math.round(km - 10_000 - rnd.nextInt(40_000));
            v.timingKm = Math.max(0, Math.round(km - 15_000 - rnd.nextInt(60_000)));
            v.warned = !v.inspection.isAfter(today)
                    || !v.greenCard.isAfter(today.minusDays(WARN_INSURANCE_CARD_DAYS))
                    || (v.tacho != null && v.tacho.isBefore(today.minusDays(WARN_TACHO_CALIBRATION_DAYS)))
                    || (v.tachoPermit != null && v.tachoPermit.isBefore(today.minusDays(WARN_TACHO_PERMIT_DAYS)));
        }
    }

    private void makeAttachments() {
        List<String> groups = new ArrayList<>();
        for (Trip t : trips) {
            if (!groups.contains(t.group)) {
                groups.add(t.group);
            }
        }
        String[] people = {"Dr. Fülöp Zsuzsanna", "Szőke Ödön", "Halász Bence", "Virág Dénes", "Őry Zsófia"};
        for (int i = 0; i < groups.size(); i += 7) {
            passengers.put(groups.get(i), List.of(people[i % people.length], people[(i + 2) % people.length]));
        }
        int n = 0;
        for (int i = 0; i < groups.size(); i += 3) {
            String g = groups.get(i);
            Trip first = trips.stream().filter(t -> t.group.equals(g)).findFirst().orElseThrow();
            List<String> docs = new ArrayList<>();
            docs.add("Szállítólevél SZL-" + first.date.getYear() + "/" + String.format("%04d", 100 + (++n) * 13));
            boolean abroad = trips.stream().anyMatch(t -> t.group.equals(g) && t.to.equals("Wien"));
            if (abroad) {
                docs.add("CMR fuvarlevél " + first.vehicle.plate);
            }
            documents.put(g, docs);
        }
    }

    // =====================================================================================
    // writing
    // =====================================================================================

    private AccessFile file(String name) {
        return AccessFile.open(dir.resolve(name).toString());
    }

    private void write() {
        AccessFile torzsek = file("Torzsek.dsb");
        torzsek.batch(() -> writeTorzsek(torzsek));
        AccessFile parameter = file("parameter.dsb");
        parameter.batch(() -> writeParameter(parameter));
        AccessFile kerova = file("Kerova.dsb");
        kerova.batch(() -> writeKerova(kerova));
        AccessFile betarol = file("betarol.mdb");
        betarol.batch(() -> writeBetarol(betarol));
        AccessFile kitarol = file("kitarol.mdb");
        kitarol.batch(() -> writeKitarol(kitarol));
        AccessFile regiszt = file("Regiszt.dsb");
        regiszt.batch(() -> {
            Rows r = new Rows(regiszt, "SzervizParameter");
            r.add("RaklapSuly", 25.0);
        });
        AccessFile tartosan = file("Tartosan.dsb");
        tartosan.batch(() -> {
            Rows r = new Rows(tartosan, "VezetokJarmuvei");
            for (Driver d : drivers) {
                if (d.plate != null) {
                    r.add("VezetöID", d.id, "Rendszám", d.plate);
                }
            }
            // stand-in drivers of two vehicles
            r.add("VezetöID", driverNamed("Kovács Béla").id, "Rendszám", "MEG-318");
            r.add("VezetöID", driverNamed("Szőke Ödön").id, "Rendszám", "JFK-903");
        });
        writeSiblings();
    }

    private void writeTorzsek(AccessFile f) {
        Rows op = new Rows(f, "Bettorzs");
        op.add("UzNev", OPERATOR_NAME,
                "UzIrszam", OPERATOR_ZIP,
                "UzSzekhely", OPERATOR_TOWN,
                "UzCim", OPERATOR_STREET,
                "UzAdoszam", OPERATOR_TAX,
                "UzSzamlaszam", "11700024-20135791-00000000",
                "Uztelefon", "0612621234",
                "UzFax", "0612621235",
                "UzMobil", "06309876543",
                "EUAdoszam", "HU14725836",
                "VPID", "HU00147258",
                "Telephely", OPERATOR_ZIP + " " + OPERATOR_TOWN + ", " + OPERATOR_STREET + " (Kőbánya, telephely és műhely)");
        Rows warn = new Rows(f, "VizsgaFigyelmeztetoNap");
        warn.add("MüszakiVizsgaFigyelmeztetöNap", WARN_INSPECTION_DAYS,
                "ZöldkártyaFigyelmeztetöNap", WARN_GREEN_CARD_DAYS,
                "TachográfHitelesNap", WARN_TACHO_CALIBRATION_DAYS,
                "TachográfOMHEngNap", WARN_TACHO_PERMIT_DAYS,
                "BiztosításZöldkNap", WARN_INSURANCE_CARD_DAYS,
                "SzemleKilométer", 1_000,
                "OlajcsereKilométer", 15_000,
                "NkKarbantNaplóKilométer", 20_000,
                "HajtásláncOlajcsereKilométer", 60_000,
                "VezérmüÉkszijcsereKilométer", 90_000);
    }

    private void writeParameter(AccessFile f) {
        Rows e = new Rows(f, "Egyebek");
        e.add("Napidíj", ALLOWANCE, "NapidíjDevizanem", HUF);
        Rows u = new Rows(f, "MennyisegiEgyseg");
        String[] units = {"kg", "t", "db", "l", "m3", "raklap"};
        for (String unit : units) {
            u.add("MennyiségiEgység", unit, "Állandó", unit.equals("kg"));
        }
        Path sibling = dir.resolve(SIBLING_FOLDER);
        Path bizonyla = dir.resolve("BizonylaNext");
        Path iface = dir.resolve("Interface");
        try {
            Files.createDirectories(bizonyla);
            Files.createDirectories(iface);
        } catch (IOException ex) {
            warn("a mappák nem hozhatók létre: " + ex.getMessage());
        }
        Rows p = new Rows(f, "Path");
        p.add("PolcrakPath", sibling.toString(),
                "FogastorPath", sibling.toString(),
                "BizonylaNextPath", bizonyla.toString(),
                "InterfacePath", iface.toString());
    }

    private void writeKerova(AccessFile f) {
        writeVehicles(f);
        writeRoutes(f);
        writeDrivers(f);
        writePurposes(f);
        writePartners(f);
        writeCountries(f, "Orszagjel");
        writeInvoices(f);
        writeTrips(f);
        writeAttachments(f);
        writeKilometreLog(f);
        writeService(f);
    }

    private void writeVehicles(AccessFile f) {
        Rows r = new Rows(f, "Jarmuvek");
        for (Vehicle v : vehicles) {
            r.add(vehicleValues(v));
        }
    }

    /** The vehicle's columns; the first seventeen are also what an invoice copies (Part 4.3). */
    private Object[] vehicleValues(Vehicle v) {
        return new Object[] {
            "GkFrsz", v.plate,
            "GkTipus", v.type,
            "GkForgalombahelyezve", dt(v.firstReg),
            "Hengerurtartalom", v.ccm,
            "FogyasztásLiter100", v.norm,
            "GkVezetoNeve", v.driver.name,
            "SzervizIntervallumNap", v.serviceDays,
            "SzervizIntervallumKM", v.serviceKm,
            "MuszakiVizsgaDatum", dt(v.inspection),
            "ZoldkartyaDatum", dt(v.greenCard),
            "CascoHaviDija", money(v.casco),
            "KotelezoHaviDija", money(v.compulsoryFee),
            "recordID", v.id,
            "KilometerOraAllasa", v.startKm,
            "OnkoltsegKm", v.truck ? 215.0 : (v.norm < 7 ? 68.0 : 96.0),
            "UtolsoSzervizDatum", dt(v.lastService),
            "JelenlegiKmAllas", v.currentKm,
            "PartnerID", v.ownerId,
            "PartnerNeve", v.ownerName,
            "Alvázszám", v.vin,
            "Motorszám", v.engineNo,
            "TachográfHitelesités", dt(v.tacho),
            "TachoOMHEng", dt(v.tachoPermit),
            "SzemleKM", v.inspectionKm,
            "OlajcsereKM", v.oilKm,
            "NköziKarbantNaploKM", v.logKm,
            "HajtaslancOlajcsKM", v.drivetrainKm,
            "VezérmüOlajcsereKM", v.timingKm,
            "Figyelmeztetés", v.warned,
            "KotelezoBiztDatum", dt(v.compulsory),
            "Alvállalkozó", v.subcontractor,
            "NemzetkoziBiztDatum", dt(v.international),
            "TuzoltoDatum", dt(v.extinguisher),
        };
    }

    private void writeRoutes(AccessFile f) {
        Rows r = new Rows(f, "UtakTavolsag");
        for (Route x : routes.values()) {
            r.add("Honnan", x.from, "Hova", x.to, "TávolságKm", x.km, "HonnanOrszág", x.fromCountry,
                    "HovaOrszág", x.toCountry);
        }
    }

    private void writeDrivers(AccessFile f) {
        Rows r = new Rows(f, "Vezetok");
        for (Driver d : drivers) {
            Vehicle v = d.vehicleId > 0 ? vehicles.get(d.vehicleId - 1) : null;
            boolean sub = v != null && v.subcontractor;
            r.add("VezetöNeve", d.name,
                    "JogositványSzáma", d.licence,
                    "JogositványÉrvényessége", dt(d.licenceExpiry),
                    "Munkakör", d.post,
                    "LakcimIrSzám", d.zip,
                    "LakcimSzékhely", d.town,
                    "LakcimCim", d.street,
                    "Elérhetöség", d.contact,
                    "Munkáltató", sub ? v.ownerName : d.employer,
                    "MunkáltatóID", sub ? v.ownerId : 0,
                    "Adóazonositó", d.taxId,
                    "TAJSzám", d.taj,
                    "SzületésiHely", d.birthPlace,
                    "SzületésiIdö", dt(d.birthDate),
                    "AnyjaNeve", d.mother,
                    "Aktiv", d.inactive,
                    "GépkocsiFrsz", d.plate == null ? "" : d.plate,
                    "PartnerID", d.id,
                    "GkID", d.vehicleId);
        }
    }

    private void writePurposes(AccessFile f) {
        Rows r = new Rows(f, "MegnevezesTorzs");
        for (String s : new String[] {"Áruszállítás", "Kiszállítás", "Anyagbeszerzés", "Ügyfél látogatás",
                "Telephelyre visszaút", "Szervizbe szállítás", "Műszaki vizsga"}) {
            r.add("Megnevezés", s);
        }
    }

    private Object[] partnerValues(Partner p, String keyName) {
        return new Object[] {
            "BerNev", p.name,
            "BerIrszam", p.zip,
            "BerSzekhely", p.town,
            "BerCim", p.street,
            "BerTelefon", p.phone,
            "BerFax", p.fax,
            "BerMobil", p.mobile,
            "BerAdoszam", p.tax,
            "BerSzamlaszam", p.account,
            keyName, p.id,
            "Kapcsolattartó", p.contact,
            "BerOrszag", p.country,
            "UgyfelStatus", p.status,
        };
    }

    private void writePartners(AccessFile f) {
        Rows r = new Rows(f, "beraktar");
        for (Partner p : partners) {
            r.add(concat(partnerValues(p, "recordID"), new Object[] {"Cégnév", p.name}));
        }
    }

    private static final String[][] COUNTRIES = {
        {"H", "Magyarország"}, {"A", "Ausztria"}, {"SK", "Szlovákia"}, {"RO", "Románia"}, {"HR", "Horvátország"},
        {"SLO", "Szlovénia"}, {"SRB", "Szerbia"}, {"UA", "Ukrajna"}, {"D", "Németország"}, {"CZ", "Csehország"},
        {"PL", "Lengyelország"}, {"I", "Olaszország"}, {"NL", "Hollandia"}, {"F", "Franciaország"},
    };

    private void writeCountries(AccessFile f, String table) {
        Rows r = new Rows(f, table);
        for (String[] c : COUNTRIES) {
            r.add("Országjel", c[0], "Ország", c[1]);
        }
    }

    private void writeInvoices(AccessFile f) {
        Rows r = new Rows(f, "SZAMLA");
        int n = 0;
        for (Invoice i : invoices) {
            n++;
            double net = Math.round(i.quantity * i.price);
            double gross = Math.round(net * 1.27);
            boolean settled = i.date.isBefore(today.minusDays(15));
            Object[] head = partnerValues(i.seller, "BerRecordID");
            Object[] vehicle = java.util.Arrays.copyOf(vehicleValues(i.vehicle), 34); // first 17 columns
            Object[] tail = {
                "TELJDATUM", dt(i.date),
                "SZML_KELTE", dt(i.date),
                "ESEDEKES", dt(i.date.plusDays(15)),
                "SZAMLASOR", i.number,
                "MEGNEVEZES", i.goods,
                "ETK", "",
                "SZJ", "",
                "AFA", 27.0,
                "MENNY_EGYS", "l",
                "MENNYISEG", (double) i.quantity,
                "NETTO_EGYS", money(i.price),
                "ENGEDMENY", 0.0,
                "NETTO_ERTE", money(net),
                "MEGJEGYZ1", "Tankolás: " + i.vehicle.plate,
                "MEGJEGYZ2", "Üzemanyagkártyás vásárlás",
                "MEGJEGYZ3", "",
                "KIEGYENLIT", settled,
                "KIEGYENDAT", settled ? dt(i.date.plusDays(12)) : null,
                "KIEGYENOSZ", money(settled ? gross : 0),
                "STORNO", false,
                "SZAMLASORS", i.serial,
                "PENZNEM", HUF,
                "TAM", "",
                "AKCIOS", false,
                "Rekord", n,
                "ReszKiegyenlites", false,
                "ReszkiegyenlitesTeljOsszeg", money(0),
                "VTSZ", i.fuel.startsWith("Benzin") ? "27101245" : "27101943",
            };
            r.add(concat(head, vehicle, tail));
        }
    }

    private void writeTrips(AccessFile f) {
        Rows r = new Rows(f, "Utak");
        for (Trip t : trips) {
            int dur = t.arr - t.dep;
            double cost = shown(t.litres * t.price);
            r.add("FRSZ", t.vehicle.plate,
                    "GkTipus", t.vehicle.type,
                    "GkVezetöNeve", t.driver.name,
                    "Dátum", dt(t.date),
                    "Honnan", t.from,
                    "Hova", t.to,
                    "TávolságKm", t.km,
                    "IndulásIdeje", time(t.dep),
                    "ÉrkezésIdeje", time(t.arr),
                    "ÖsszesenIdö", time(dur),
                    "CsoportAzonositó", t.group,
                    "ÖsszesenKM", t.groupKm,
                    "Megnevezés", t.purpose,
                    "ÁuTömege", (double) t.load,
                    "MennyiségiEgység", "kg",
                    "VezetöKezdésIdö", time(t.workStart),
                    "VezetöVégezIdö", time(t.workEnd),
                    "CégNév", t.partner == null ? "" : t.partner.name,
                    "CégCim", t.partner == null ? "" : t.partner.zip + " " + t.partner.town + ", " + t.partner.street,
                    "FogyasztottLiter", t.litres,
                    "Üzemanyagár", t.price,
                    "Üzemanyagköltség", cost,
                    "KezdöKM", t.startKm,
                    "ZáróKM", t.endKm,
                    "KezdöZáró", t.endKm - t.startKm,
                    "Napidíj", t.allowance,
                    "NapidíjPénznem", HUF,
                    "Napidijas", t.allowanceDay,
                    "ElözöDátum", dt(t.prevDate),
                    "ElözöÉrkezés", t.prevDate == null ? null : time(t.prevArr));
        }
    }

    private void writeAttachments(AccessFile f) {
        Rows p = new Rows(f, "UtakSzallitottSzemely");
        passengers.forEach((g, names) -> names.forEach(n -> p.add("SzállitottSzemélyNeve", n, "UtakCsoportAzonosito", g)));
        Rows d = new Rows(f, "UtakCsatoltOkmany");
        documents.forEach((g, docs) -> docs.forEach(x -> d.add("CsatoltOkmány", x, "UtakCsoportAzonosito", g)));
    }

    private void writeKilometreLog(AccessFile f) {
        Rows r = new Rows(f, "UtakKilometerNyt");
        Set<String> logged = Set.of("KRV-101", "MEG-318", "JFK-903", "SZO-711");
        LocalDate from = today.minusDays(75);
        for (Trip t : trips) {
            if (!logged.contains(t.vehicle.plate) || t.date.isBefore(from)) {
                continue;
            }
            r.add("VezetöNeve", t.driver.name,
                    "Dátum", dt(t.date),
                    "GkTipus", t.vehicle.type,
                    "GkFrsz", t.vehicle.plate,
                    "GkrecordID", t.vehicle.id,
                    "KMÁllás", t.endKm,
                    "Honnan", t.from,
                    "Hova", t.to,
                    "TávolságKm", t.km);
        }
    }

    private static final String[][] MECHANICS = {
        {"Fűzfa Gábor", "SZ01"}, {"Kőrösi Ádám", "SZ02"}, {"Ürögdi Tibor", "SZ03"},
    };

    private void writeService(AccessFile f) {
        Rows mech = new Rows(f, "SzervizModulSzerelok");
        for (String[] m : MECHANICS) {
            mech.add("SzerelöNeve", m[0], "SzerelöKódja", m[1]);
        }
        Rows jobs = new Rows(f, "SzervizModulMunkak");
        String[][] jobList = {
            {"Olajcsere és szűrőcsere", "M01"}, {"Fékbetét és féktárcsa csere", "M02"},
            {"Vezérműszíj-készlet csere", "M03"}, {"Műszaki vizsgára felkészítés", "M04"},
            {"Futómű-beállítás", "M05"}, {"Klímatöltés és -fertőtlenítés", "M06"},
            {"Gumiabroncs csere (téli/nyári)", "M07"}, {"Tachográf hitelesítés", "M08"},
            {"Akkumulátor csere", "M09"}, {"Hibakód-olvasás, diagnosztika", "M10"},
        };
        for (String[] j : jobList) {
            jobs.add("MunkaMegnevezés", j[0], "MunkaKód", j[1]);
        }
        Rows sv = new Rows(f, "SzervizModul");
        Rows parts = new Rows(f, "SzervizModulAlkatreszek");
        for (Visit s : visits) {
            double rate = s.vehicle.truck ? 11_500 : 9_500;
            double overhead = 2_500;
            String[] m = MECHANICS[s.mechanic];
            sv.add("JármüID", s.vehicle.id,
                    "recordID", s.key,
                    "SzerelöNeve", m[0],
                    "SzerelöKódja", m[1],
                    "Dátum", dt(s.date),
                    "Munkavégzés", s.job,
                    "KmÁllás", s.km,
                    "Óradij", rate,
                    "Rezsióradij", overhead,
                    "Munkaóra", s.hours,
                    "Rezsidij", s.hours * overhead,
                    "Munkadij", rate * s.hours,
                    "EsedékességKM", s.km + s.vehicle.serviceKm,
                    "Pénznem", HUF);
            for (int[] p : s.parts) {
                Article a = articles.get(p[0]);
                parts.add(concat(articleValues(a, p[1]), new Object[] {"JármüID", s.vehicle.id, "recordID", s.key}));
            }
        }
    }

    private Object[] articleValues(Article a, double quantity) {
        double gross = Math.round(a.net * 1.27);
        return new Object[] {
            "cikkszám", a.code,
            "megnevezés", a.name,
            "vámtarifaszám", a.tariff,
            "mennyiségi egység", a.unit,
            "hiba", 0,
            "tarifális megnevezés", tariffName(a.tariff),
            "flag", false,
            "NettoSuly", 0.0,
            "ErzekenyAru", "",
            "ARUCSOPORT", a.group,
            "NETTO", a.net,
            "AFA", 27.0,
            "MENNYISEG", quantity,
            "BRUTTO", gross,
            "GONGYOLEG", "Nem",
            "SZJ", a.service ? "50.20.11" : "",
            "PENZNEM", HUF,
            "TAM", "",
            "BESZNETTO", a.purchase,
            "ARRESSZAZA", Math.round((a.net / a.purchase - 1) * 10_000) / 100.0,
            "MEGJEGYZES", a.service ? "Szolgáltatás" : "Alkatrész",
            "ARUKOD", a.group.substring(0, 3).toUpperCase(java.util.Locale.ROOT),
            "BruttoSuly", 0.0,
            "Származó", "NEM",
            "Tárhely1", a.service ? "" : a.shelf,
            "Azonosító", a.id,
            "FolyamatosTelj", false,
            "DarabszámCsomagban", 1.0,
        };
    }

    private void writeBetarol(AccessFile f) {
        Rows r = new Rows(f, "Cikkszám");
        for (Article a : articles) {
            r.add(concat(articleValues(a, a.stock), new Object[] {
                "Szorzó", Math.round(a.net / a.purchase * 10_000) / 10_000.0,
                "VezetöFizetés", 0.0,
                "TávolságKM", 0.0,
                "Különjárat", false,
                "Számlázható", true,
                "Aktiv", false, // "NEM aktív" unticked: the article is in use
                "BIZONYLA", true,
                "TARTOSAN", false,
                "KEROVA", true,
                "POLCRAKW", !a.service,
                "FOGASTOR", false,
            }));
        }
        Rows t = new Rows(f, "Vámtarifaszám");
        int id = 0;
        Set<String> done = new HashSet<>();
        for (Article a : articles) {
            if (a.tariff.isEmpty() || !done.add(a.tariff)) {
                continue;
            }
            t.add("Vámtarifaszám", a.tariff,
                    "Érvényesség dátumtól", dt(LocalDate.of(today.getYear() - 3, 1, 1)),
                    "Érvényesség dátumig", dt(LocalDate.of(today.getYear() + 2, 12, 31)),
                    "VamtariafaszámÉrvID", ++id,
                    "Tarifális megnevezés", tariffName(a.tariff),
                    "KulonosMertekegyseg", a.unit.equals("l") ? "l" : "");
        }
        writeCountries(f, "Orszagjel");
    }

    private static String tariffName(String tariff) {
        return switch (tariff) {
            case "27101981" -> "Motorolaj, kenőolaj";
            case "84212300" -> "Olaj- vagy üzemanyagszűrő belső égésű motorhoz";
            case "84213100" -> "Légszűrő belső égésű motorhoz";
            case "84213920" -> "Levegőszűrő és -tisztító, más";
            case "68132000" -> "Fékbetét azbeszttartalom nélkül";
            case "87083091" -> "Tárcsafék alkatrészei";
            case "40103200" -> "Végtelenített hajtószíj";
            case "38200000" -> "Fagyálló készítmény";
            case "31021010" -> "Karbamid vizes oldatban";
            case "85392130" -> "Volfrám-halogén izzólámpa";
            case "85071020" -> "Ólomakkumulátor dugattyús motor indításához";
            case "40112010" -> "Új gumiabroncs autóbuszhoz, tehergépjárműhöz";
            case "85129090" -> "Ablaktörlő alkatrésze";
            default -> "";
        };
    }

    private void writeKitarol(AccessFile f) {
        Rows r = new Rows(f, "Címzett");
        Object[][] customers = {
            {"Győri Csavar- és Lemezgyártó Kft.", "9027", "Győr", "Fehérvári út 18.", "Németh Gábor", 30, false, false},
            {"Kőbányai Sörraktár Kft.", "1106", "Budapest", "Maglódi út 47.", "Hegedűs Anna", 15, false, false},
            {"Egri Borház és Pincészet Bt.", "3300", "Eger", "Szépasszonyvölgy utca 21.", "Kelemen Dóra", 8, false, false},
            {"Pécsi Kesztyűgyártó Kft.", "7630", "Pécs", "Hengermalom utca 3.", "Török Ildikó", 30, false, false},
            {"Fűzfa Bútorgyártó Kft.", "1105", "Budapest", "Fűzfa utca 3.", "Szőke Ödönné", 15, false, false},
            {"Hűtő-Szerviz Bt.", "6724", "Szeged", "Londoni körút 12.", "Major Győző", 8, true, false},
            {"Szőke és Fia Fuvarozó Bt.", "2040", "Budaörs", "Szabadság út 55.", "Szőke Ödön", 15, false, true},
        };
        int id = 0;
        for (Object[] c : customers) {
            id++;
            String address = c[1] + " " + c[2] + ", " + c[3];
            r.add("recordID", id,
                    "CimNev", c[0],
                    "CimIrszam", c[1],
                    "CimSzekhely", c[2],
                    "CimCim", c[3],
                    "CimTelefon", "06-" + digits(2) + "-" + digits(6),
                    "CimFax", "",
                    "CimMobil", "06-30-" + digits(7),
                    "CimAdoszam", digits(8) + "-2-" + digits(2),
                    "CimSzamlaszam", "11773016-" + digits(8),
                    "Kapcsolattartó", c[4],
                    "SzamlazasSzekhelye", c[2],
                    "SzamlazasIrszama", c[1],
                    "SzamlazasCime", c[3],
                    "VevoKodja", "V" + String.format("%03d", id),
                    "JutalekJel", "",
                    "FizetésiHatáridö", c[5],
                    "KézhezvételNap", 3,
                    "KapcsolattartóCime", address,
                    "Megjegyzés", (Boolean) c[6] ? "Megszűnt együttműködés" : "",
                    "FolyamatosTelj", false,
                    "NemAktiv", c[6],
                    "KVTDÁtvállalás", false,
                    "Különjárat", id % 3 == 0,
                    "Munkásjárat", false,
                    "Alvállalkozó", c[7],
                    "PénzforgalmiElszámolás", false,
                    "CimOrszag", "H");
        }
    }

    /** The warehouse of the sibling products: issues of parts to the vehicles (Parts 6.3, 6.4). */
    private void writeSiblings() {
        Path sibling = dir.resolve(SIBLING_FOLDER);
        try {
            CompanyFolder.init(sibling, true);
        } catch (DaoException e) {
            warn("a raktári adatbázisok nem hozhatók létre: " + e.getMessage());
            return;
        }
        String[] files = {"Polcrak.dsb", "Fogastor.DSB"};
        for (int fi = 0; fi < files.length; fi++) {
            AccessFile f;
            try {
                f = AccessFile.open(sibling.resolve(files[fi]).toString());
            } catch (DaoException e) {
                warn("nincs meg: " + files[fi]);
                continue;
            }
            final int shift = fi;
            f.batch(() -> {
                Rows r = new Rows(f, "KIVET");
                for (int i = 0; i < 6; i++) {
                    Article a = articles.get((i * 2 + shift) % 14);
                    Vehicle v = vehicles.get((i + shift * 3) % vehicles.size());
                    double qty = a.unit.equals("l") ? 5 + i : 1 + (i % 2);
                    double net = a.net * qty;
                    r.add("MEGNEVEZES", a.name,
                            "MENNYISEG", qty,
                            "MENNY_EGYS", a.unit,
                            "NETTO", a.net,
                            "AFA", 27.0,
                            "ENGEDMENY", 0.0,
                            "ARUKOD", a.group.substring(0, 3).toUpperCase(java.util.Locale.ROOT),
                            "POLCSZAM", a.shelf,
                            "ITJ", "",
                            "KIDATUM", dt(today.minusDays(3 + i * 11L + shift * 5L)),
                            "VEVONEV", OPERATOR_NAME,
                            "VEVOIRSZ", OPERATOR_ZIP,
                            "VEVOSZEKH", OPERATOR_TOWN,
                            "VEVOCIM", OPERATOR_STREET,
                            "VEVOADOSZ", OPERATOR_TAX,
                            "GKTIPUS", v.type,
                            "SZAMLAZVA", "N",
                            "Cikkszám", a.code,
                            "Devizanem", HUF,
                            "BRUTTO", Math.round(net * 1.27) * 1.0,
                            "BESZERZAR", a.purchase,
                            "AFABESZ", 27.0,
                            "ARRES", Math.round((a.net - a.purchase) * qty) * 1.0,
                            "SzukségesMenny", qty,
                            "BeépülöAnyag", true,
                            "Készletezve", true,
                            "FolyamatosTelj", false);
                }
            });
        }
    }

    // =====================================================================================
    // helpers
    // =====================================================================================

    private static LocalDateTime dt(LocalDate d) {
        return d == null ? null : d.atStartOfDay();
    }

    /**
     * A figure as Part 3.2 leaves it in the table: computed as a double, shown in a text box with at
     * most 15 significant digits, and read back from that text.
     */
    private static double shown(double v) {
        return new BigDecimal(v).round(new MathContext(15)).doubleValue();
    }

    private static BigDecimal money(double v) {
        return BigDecimal.valueOf(v).setScale(2, RoundingMode.HALF_EVEN);
    }

    /** Minutes since midnight as the program keeps a time of day: hours, then two minute digits after the comma. */
    private static double time(int minutes) {
        int h = minutes / 60;
        int m = minutes % 60;
        return (h * 100 + m) / 100.0;
    }

    private String digits(int n) {
        StringBuilder b = new StringBuilder();
        for (int i = 0; i < n; i++) {
            b.append((char) ('0' + (i == 0 ? 1 + rnd.nextInt(9) : rnd.nextInt(10))));
        }
        return b.toString();
    }

    private String letters(int n) {
        StringBuilder b = new StringBuilder();
        for (int i = 0; i < n; i++) {
            b.append((char) ('A' + rnd.nextInt(26)));
        }
        return b.toString();
    }

    private static Object[] concat(Object[]... parts) {
        List<Object> all = new ArrayList<>();
        for (Object[] p : parts) {
            Collections.addAll(all, p);
        }
        return all.toArray();
    }

    /** Adds rows to one table through the record store, setting columns by name. */
    private static final class Rows {
        private final Recordset rs;
        private final String table;
        private final List<String> columns;
        private final Set<String> reported = new HashSet<>();

        Rows(AccessFile f, String table) {
            this.table = table;
            this.rs = new Database(f).OpenRecordset(table);
            this.columns = rs.columnNames();
        }

        void add(Object... namesAndValues) {
            rs.AddNew();
            for (int i = 0; i + 1 < namesAndValues.length; i += 2) {
                String name = (String) namesAndValues[i];
                Object value = namesAndValues[i + 1];
                if (columns.stream().noneMatch(c -> c.equalsIgnoreCase(name))) {
                    if (reported.add(name)) {
                        warn("nincs ilyen oszlop: " + table + "." + name + " (kihagyva)");
                    }
                    continue;
                }
                if (value == null) {
                    continue;
                }
                try {
                    rs.Fields(name).setValue(value);
                } catch (DaoException e) {
                    if (reported.add(name)) {
                        warn("az érték nem írható: " + table + "." + name + " = " + value + " (" + e.getMessage() + ")");
                    }
                }
            }
            rs.Update();
        }
    }

    // --- the model ---

    private static final class Partner {
        int id;
        String name;
        String zip;
        String town;
        String street;
        String phone;
        String fax;
        String mobile;
        String tax;
        String account;
        String contact;
        String country;
        String status;
        boolean fuel;
    }

    private static final class Driver {
        int id;
        String name;
        String licence;
        LocalDate licenceExpiry;
        String post;
        String zip;
        String town;
        String street;
        String contact;
        String employer;
        String taxId;
        String taj;
        String birthPlace;
        LocalDate birthDate;
        String mother;
        boolean inactive;
        String plate;
        int vehicleId;
    }

    private static final class Vehicle {
        int id;
        String plate;
        String type;
        LocalDate firstReg;
        double ccm;
        double norm;
        Driver driver;
        int serviceDays;
        double serviceKm;
        LocalDate inspection;
        LocalDate greenCard;
        LocalDate compulsory;
        LocalDate international;
        LocalDate extinguisher;
        LocalDate tacho;
        LocalDate tachoPermit;
        LocalDate lastService;
        double casco;
        double compulsoryFee;
        double startKm;
        double currentKm;
        int ownerId;
        String ownerName;
        boolean subcontractor;
        String vin;
        String engineNo;
        double inspectionKm;
        double oilKm;
        double logKm;
        double drivetrainKm;
        double timingKm;
        boolean warned;
        boolean truck;
        String fuel;
        double activity;
        List<List<String>> tours;
        final TreeMap<LocalDate, Double> odometer = new TreeMap<>();
    }

    private record Route(String from, String to, double km, String fromCountry, String toCountry) {
    }

    private static final class Invoice {
        Partner seller;
        Vehicle vehicle;
        String goods;
        String fuel;
        LocalDate date;
        int number;
        int quantity;
        double price;
        String serial;
    }

    private static final class Trip {
        Vehicle vehicle;
        Driver driver;
        LocalDate date;
        String from;
        String to;
        double km;
        int dep;
        int arr;
        String group;
        double groupKm;
        String purpose;
        int load;
        Partner partner;
        double litres;
        double price;
        double startKm;
        double endKm;
        int workStart;
        int workEnd;
        double allowance;
        boolean allowanceDay;
        LocalDate prevDate;
        int prevArr;
    }

    private static final class Article {
        int id;
        String code;
        String name;
        String unit;
        String tariff;
        double net;
        double purchase;
        String group;
        double stock;
        String shelf;
        boolean service;
    }

    private static final class Visit {
        Vehicle vehicle;
        LocalDate date;
        String job;
        double hours;
        double km;
        int mechanic;
        String key;
        final List<int[]> parts = new ArrayList<>();
    }
}
