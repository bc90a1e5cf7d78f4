#include "CatalogueVocabulary.h"

namespace bench {

namespace {

using Texts = std::vector<const char*>;

std::vector<ModuleKind> digitalKinds()
{
    return {{"DI",
             24,
             true,
             1,
             {2, 4, 8, 16, 32},
             {"{n} DI {r} {x}", "{n} DI {r}", "{n}-channel digital input {r}", "{n} DE {r} {x}",
              "{n}-Kanal-Digitaleingang {r} {x}"},
             {"DI {i}", "Input {i}", "Eingang {i}"},
             {"24 V DC", "24 V UC", "48 V DC", "110 V AC", "230 V AC", "5 V TTL", "NAMUR",
              "60 V DC", "12 V DC"},
             {"3 ms", "0.2 ms", "0,2 ms", "10 ms", "20 ms", "2-wire", "3-Leiter", "NPN",
              "high-side", "low-side"}},
            {"DO",
             20,
             false,
             1,
             {2, 4, 8, 16, 32},
             {"{n} DO {r} {x}", "{n} DO {r}", "{n}-channel digital output {r} {x}",
              "{n} DA {r} {x}", "{n}-Kanal-Digitalausgang {r} {x}"},
             {"DO {i}", "Output {i}", "Ausgang {i}"},
             {"24 V DC", "24 V UC", "48 V DC", "230 V AC", "110 V DC"},
             {"0.5 A", "0,5 A", "2 A", "1 A", "8 A", "high-side", "low-side", "short-circuit proof",
              "kurzschlussfest"}},
            {"RO",
             7,
             false,
             1,
             {1, 2, 4, 8},
             {"{n} DO relay {r} {x}", "{n} Relais {r} {x}", "Relais {n} Wechsler {r} {x}",
              "{n} relay changeover {r} {x}"},
             {"Relay {i}", "Relais {i}"},
             {"230 V AC", "24 V DC", "250 V UC", "400 V AC"},
             {"2 A", "5 A", "16 A", "potentialfrei", "isolated"}},
            {"SF",
             1,
             true,
             1,
             {4, 8},
             {"{n} SDI {r}, safe inputs {x}", "{n} SDO {r}, safe outputs {x}",
              "{n} sichere Eingänge {r} {x}"},
             {"Safe input {i}", "Channel valid {i}", "Sicherer Eingang {i}"},
             {"24 V DC"},
             {"SIL3", "PL e", "2 A"}}};
}

std::vector<ModuleKind> analogKinds()
{
    return {
        {"AI",
         18,
         true,
         16,
         {1, 2, 4, 8, 16},
         {"{n} AI {r} {x}", "{n} AI {r}", "{n}-channel analog input {r} {x}", "{n} AE {r} {x}",
          "{n}-Kanal-Analogeingang {r}"},
         {"AI {i}", "Input {i}", "Messwert {i}"},
         {"±10 V", "0-10 V", "0-20 mA", "4-20 mA", "0/4-20 mA", "±10 V / 0-20 mA", "±5 V", "0-5 V",
          "±20 mA"},
         {"12 bit", "16 bit", "16 Bit", "24 bit", "single-ended", "differential", "HART", "2-wire",
          "galvanisch getrennt"}},
        {"AO",
         9,
         false,
         16,
         {1, 2, 4, 8, 16},
         {"{n} AO {r} {x}", "{n} AO {r}", "{n}-channel analog output {r} {x}", "{n} AA {r} {x}"},
         {"AO {i}", "Output {i}", "Stellwert {i}"},
         {"±10 V", "0-10 V", "0-20 mA", "4-20 mA", "0/4-20 mA"},
         {"12 bit", "16 bit", "16 Bit", "HART", "isolated"}},
        {"RT",
         6,
         true,
         16,
         {1, 2, 4, 8},
         {"{n} AI RTD {r} {x}", "{n} AI thermocouple {x}", "{n} Widerstandsthermometer {r}",
          "{n} Thermoelement {x}"},
         {"RTD {i}", "Temperature {i}", "Temperatur {i}"},
         {"Pt100", "Pt1000", "Ni100", "Pt100/Pt1000"},
         {"2-wire", "3-wire", "4-wire", "Type K", "Typ J", "0.1 °C"}}};
}

std::vector<ModuleKind> otherKinds()
{
    return {{"CT",
             4,
             true,
             32,
             {1, 2, 4},
             {"{n} counters {r} {x}", "{n} Zähler {r} {x}", "Counter {r} {x}",
              "Vor-/Rückwärtszähler {r} {x}"},
             {"Count {i}", "Zähler {i}", "Latch {i}"},
             {"32 bit", "32 Bit", "16 bit"},
             {"100 kHz", "500 kHz", "24 V", "5 V", "1 MHz"}},
            {"EN",
             3,
             true,
             32,
             {1, 2},
             {"Incremental encoder {r} {x}", "SSI encoder {r} {x}", "Inkrementalgeber {r} {x}",
              "Drehgeber {r}"},
             {"Position {i}", "Speed {i}", "Drehzahl {i}"},
             {"RS-422", "32 bit", "24 V HTL", "5 V"},
             {"1 MHz", "500 kHz", "25 bit", "Gray"}},
            {"CM",
             3,
             true,
             8,
             {8, 16, 24},
             {"RS-485 interface {x}", "RS-232 interface {x}", "Serielle Schnittstelle RS-485 {x}",
              "CAN gateway {x}", "M-Bus master {x}", "DALI master {x}"},
             {"Rx {i}", "Tx {i}"},
             {""},
             {"9600 baud", "115200 baud", "adjustable", "einstellbar", "40 byte"}},
            {"EM",
             3,
             true,
             32,
             {3, 6, 9, 13},
             {"3-phase power measurement {r} {x}", "Energy meter {r} {x}", "Energiezähler {r} {x}",
              "3-Phasen-Leistungsmessung {r} {x}"},
             {"L{i} U", "L{i} I", "Spannung L{i}", "L{i} active power"},
             {"480 V", "690 V", "400 V AC"},
             {"1 A", "5 A", "65 A", "Rogowski"}},
            {"PS",
             2,
             true,
             1,
             {1, 2},
             {"Field supply {r} {x}", "Einspeisung {r} {x}", "Bus supply {r}", "Netzteil {r} {x}"},
             {"Supply present {i}", "Sicherung {i}"},
             {"24 V", "24 V DC", "230 V AC", "5 V / 2 A"},
             {"fused", "mit Sicherung", "10 A", "diagnostics"}}};
}

std::vector<ModuleKind> allKinds()
{
    std::vector<ModuleKind> kinds = digitalKinds();
    for (const auto& more : {analogKinds(), otherKinds()}) {
        kinds.insert(kinds.end(), more.begin(), more.end());
    }
    return kinds;
}

} // namespace

const std::vector<ModuleKind>& moduleKinds()
{
    static const std::vector<ModuleKind> kinds = allKinds();
    return kinds;
}

const std::vector<const char*>& labelSuffixes()
{
    static const Texts suffixes{"XTR",  "/T",     "ext. temp.", "eXtended", "Ex i",     "ECO",
                                "slim", "rev. 2", "rev. 3",     "weiß",     "lackiert", "AB"};
    return suffixes;
}

const std::vector<const char*>& stateNames()
{
    static const Texts names{"Line fault {i}", "Overload {i}", "Drahtbruch {i}", "Valid {i}",
                             "Short circuit {i}"};
    return names;
}

const std::vector<ParameterForm>& parameterForms()
{
    static const std::vector<ParameterForm> forms{{"Input filter", "ms", 8},
                                                  {"Invert input {i}", "", 1},
                                                  {"Substitute value", "", 8},
                                                  {"Fault value {i}", "", 8},
                                                  {"Pulse stretching", "s", 8},
                                                  {"Hysteresis {i}", "%", 16},
                                                  {"Upper limit {i}", "V", 16},
                                                  {"Lower limit {i}", "V", 16},
                                                  {"Signal range {i}", "", 8},
                                                  {"Wire break check {i}", "", 1},
                                                  {"Filter depth", "", 3},
                                                  {"Zero offset {i}", "mA", 16},
                                                  {"Mains suppression", "Hz", 8},
                                                  {"Averaging of input {i}", "", 8},
                                                  {"Report faults of input {i}", "", 1},
                                                  {"Switch-on delay {i}", "ms", 16},
                                                  {"Switch-off delay {i}", "ms", 16},
                                                  {"Behaviour on bus fault", "", 8},
                                                  {"Watchdog", "ms", 16},
                                                  {"Safety address", "", 16},
                                                  {"Diagnosis {i}", "", 1},
                                                  {"Oversampling", "", 8},
                                                  {"Slew rate", "V/s", 16},
                                                  {"Ramp {i}", "µA/s", 16},
                                                  {"Sensor type {i}", "", 8},
                                                  {"Temperature limit {i}", "°C", 16},
                                                  {"Unit of temperature", "", 8},
                                                  {"Cold junction", "°C", 16},
                                                  {"Baud rate", "", 8},
                                                  {"Stop bits", "", 8},
                                                  {"Parity", "", 8},
                                                  {"Gate function {i}", "", 8},
                                                  {"Preset {i}", "", 32},
                                                  {"Scaling factor", "", 32},
                                                  {"Measuring time", "ms", 16},
                                                  {"Cycle time", "µs", 16},
                                                  {"Report undervoltage", "", 1},
                                                  {"Undervoltage limit", "V", 16},
                                                  {"Eingangsfilter", "ms", 8},
                                                  {"Ersatzwert {i}", "", 8},
                                                  {"Drahtbruchprüfung {i}", "", 1},
                                                  {"Messbereich {i}", "", 8},
                                                  {"Mittelwertbildung", "", 8},
                                                  {"Netzunterdrückung", "Hz", 8},
                                                  {"Verhalten bei Busfehler", "", 8},
                                                  {"Flankenauswahl {i}", "", 8},
                                                  {"Zählrichtung {i}", "", 1},
                                                  {"Übersetzungsverhältnis", "", 32},
                                                  {"Nennspannung", "V", 16},
                                                  {"Schleppfehler", "", 16},
                                                  {"Grenzwert oben {i}", "V", 16},
                                                  {"Grenzwert unten {i}", "V", 16},
                                                  {"Öffnungszeit {i}", "ms", 16}};
    return forms;
}

const std::vector<std::vector<const char*>>& optionLists()
{
    static const std::vector<Texts> lists{
        {"10 ms", "20 ms", "50 ms"},
        {"0.2 ms", "3 ms", "10 ms"},
        {"Low", "High", "Last value"},
        {"off", "on"},
        {"Open", "Hold last value", "Substitute value", "Switch off"},
        {"50 Hz", "60 Hz", "400 Hz"},
        {"±10 V", "0-10 V", "0-20 mA", "4-20 mA"},
        {"2 values", "4 values", "8 values", "16 values", "32 values"},
        {"Pt100", "Pt1000", "Ni100", "Ni1000", "Pt200", "Pt500", "Cu10"},
        {"Type K", "Type J", "Type T", "Type E", "Type N", "Type R", "Type S", "Type B"},
        {"°C", "°F"},
        {"1200", "2400", "4800", "9600", "19200", "38400", "57600", "115200"},
        {"none", "even", "odd"},
        {"Rising", "Falling", "Both"},
        {"1-fold", "2-fold", "4-fold"},
        {"2-wire", "3-wire", "4-wire"},
        {"aus", "ein"},
        {"Letzten Wert halten", "Ersatzwert ausgeben", "Abschalten"},
        {"steigend", "fallend", "beide Flanken"},
        {"Wechselspannung", "Gleichspannung"},
        {"Logarithmisch", "Linear", "Quadratwurzel"}};
    return lists;
}

} // namespace bench
