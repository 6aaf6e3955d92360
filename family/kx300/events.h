#pragma once

#include "eventrow.h"
#include "hostvocabulary.h"

/**
 * The events of the 6-20 kVA models; a row's place is the event's number.
 *
 * The host matches these texts as they stand: misspellings, missing and trailing blanks and
 * repeated texts are intended.
 */
namespace kx300 {

using namespace HostContract;

// clang-format off
constexpr EventRow events[] = {
    /*  0 */ { QT_TRANSLATE_NOOP("tavoFont", "Bus over voltage"),                                  QT_TRANSLATE_NOOP("tavoFont", "Bus over voltage disappear"),                                  EventUse::Plain,    EventSeverity::Critical    },
    /*  1 */ { QT_TRANSLATE_NOOP("tavoFont", "Bus under voltage"),                                 QT_TRANSLATE_NOOP("tavoFont", "Bus under voltage disappear"),                                 EventUse::Plain,    EventSeverity::Critical    },
    /*  2 */ { QT_TRANSLATE_NOOP("tavoFont", "Bus unbalance"),                                     QT_TRANSLATE_NOOP("tavoFont", "Bus unbalance disappear"),                                     EventUse::Plain,    EventSeverity::Critical    },
    /*  3 */ { QT_TRANSLATE_NOOP("tavoFont", "Bus soft start fail"),                               QT_TRANSLATE_NOOP("tavoFont", "Bus soft start fail disappear"),                               EventUse::Plain,    EventSeverity::Critical    },
    /*  4 */ { QT_TRANSLATE_NOOP("tavoFont", "Inv soft start fail"),                               QT_TRANSLATE_NOOP("tavoFont", "Inv soft start fail disappear"),                               EventUse::Plain,    EventSeverity::Critical    },
    /*  5 */ { QT_TRANSLATE_NOOP("tavoFont", "Inv over voltage"),                                  QT_TRANSLATE_NOOP("tavoFont", "Inv over voltage disappear"),                                  EventUse::Plain,    EventSeverity::Critical    },
    /*  6 */ { QT_TRANSLATE_NOOP("tavoFont", "Inv under voltag"),                                  QT_TRANSLATE_NOOP("tavoFont", "Inv under voltag disappear"),                                  EventUse::Plain,    EventSeverity::Critical    },
    /*  7 */ { QT_TRANSLATE_NOOP("tavoFont", "Forbid inv"),                                        QT_TRANSLATE_NOOP("tavoFont", "Forbid inv disappear"),                                        EventUse::Plain,    EventSeverity::Critical    },
    /*  8 */ { QT_TRANSLATE_NOOP("tavoFont", "Over temperature"),                                  QT_TRANSLATE_NOOP("tavoFont", "Over temperature disappear"),                                  EventUse::Plain,    EventSeverity::Critical    },
    /*  9 */ { QT_TRANSLATE_NOOP("tavoFont", "Output shorted"),                                    QT_TRANSLATE_NOOP("tavoFont", "Output shorted disappear"),                                    EventUse::Plain,    EventSeverity::Critical    },
    /* 10 */ { QT_TRANSLATE_NOOP("tavoFont", "Overload"),                                          QT_TRANSLATE_NOOP("tavoFont", "Overload disappear"),                                          EventUse::Plain,    EventSeverity::Critical    },
    /* 11 */ { QT_TRANSLATE_NOOP("tavoFont", "Abnormal negative power "),                          QT_TRANSLATE_NOOP("tavoFont", "Abnormal negative power disappear"),                           EventUse::Plain,    EventSeverity::Critical    },
    /* 12 */ { QT_TRANSLATE_NOOP("tavoFont", "shutdown fault"),                                    QT_TRANSLATE_NOOP("tavoFont", "Shutdown fault disappear"),                                    EventUse::Plain,    EventSeverity::Critical    },
    /* 13 */ { QT_TRANSLATE_NOOP("tavoFont", "Inconsistentunused parallel software version "),     QT_TRANSLATE_NOOP("tavoFont", "Inconsistentunused parallel software version disappear"),      EventUse::Plain,    EventSeverity::Warning     },
    /* 14 */ { QT_TRANSLATE_NOOP("tavoFont", "Abnormal synchronous signal "),                      QT_TRANSLATE_NOOP("tavoFont", "Abnormal synchronous signal disappear"),                       EventUse::Plain,    EventSeverity::Warning     },
    /* 15 */ { QT_TRANSLATE_NOOP("tavoFont", "Abnormal synchronous pulse "),                       QT_TRANSLATE_NOOP("tavoFont", "Abnormal synchronous pulse disappear"),                        EventUse::Plain,    EventSeverity::Warning     },
    /* 16 */ { QT_TRANSLATE_NOOP("tavoFont", "Inverter relay short circuit"),                      QT_TRANSLATE_NOOP("tavoFont", "Inverter relay short circuit disappear"),                      EventUse::Plain,    EventSeverity::Critical    },
    /* 17 */ { QT_TRANSLATE_NOOP("tavoFont", "Bus short"),                                         QT_TRANSLATE_NOOP("tavoFont", "Bus short disappear"),                                         EventUse::Plain,    EventSeverity::Critical    },
    /* 18 */ { QT_TRANSLATE_NOOP("tavoFont", "CAN communication abnormal"),                        QT_TRANSLATE_NOOP("tavoFont", "CAN communication abnormal disappear"),                        EventUse::Plain,    EventSeverity::Warning     },
    /* 19 */ { QT_TRANSLATE_NOOP("tavoFont", "Physical address conflict"),                         QT_TRANSLATE_NOOP("tavoFont", "Physical address conflict disappear"),                         EventUse::Plain,    EventSeverity::Warning     },
    /* 20 */ { QT_TRANSLATE_NOOP("tavoFont", "Parallel UPS type conflict"),                        QT_TRANSLATE_NOOP("tavoFont", "Parallel UPS type conflict disappear"),                        EventUse::Plain,    EventSeverity::Warning     },
    /* 21 */ { QT_TRANSLATE_NOOP("tavoFont", "Battery number set error"),                          QT_TRANSLATE_NOOP("tavoFont", "Battery number set error disappear"),                          EventUse::Plain,    EventSeverity::Warning     },
    /* 22 */ { QT_TRANSLATE_NOOP("tavoFont", "Input SCR soft start fail"),                         QT_TRANSLATE_NOOP("tavoFont", "Input SCR soft start fail disappear"),                         EventUse::Plain,    EventSeverity::Critical    },
    /* 23 */ { QT_TRANSLATE_NOOP("tavoFont", "Rectify SCR fault"),                                 QT_TRANSLATE_NOOP("tavoFont", "Rectify SCR fault disappear"),                                 EventUse::Plain,    EventSeverity::Critical    },
    /* 24 */ { QT_TRANSLATE_NOOP("tavoFont", "Abnormal inverter"),                                 QT_TRANSLATE_NOOP("tavoFont", "Abnormal inverter disappear"),                                 EventUse::Plain,    EventSeverity::Critical    },
    /* 25 */ { QT_TRANSLATE_NOOP("tavoFont", "Parallel bypass wiring error"),                      QT_TRANSLATE_NOOP("tavoFont", "Parallel bypass wiring error disappear"),                      EventUse::Plain,    EventSeverity::Critical    },
    /* 26 */ { QT_TRANSLATE_NOOP("tavoFont", "Inverter relay opened"),                             QT_TRANSLATE_NOOP("tavoFont", "Inverter relay opened disappear"),                             EventUse::Plain,    EventSeverity::Critical    },
    /* 27 */ { QT_TRANSLATE_NOOP("tavoFont", "PFC fault"),                                         QT_TRANSLATE_NOOP("tavoFont", "PFC fault disappear"),                                         EventUse::Plain,    EventSeverity::Critical    },
    /* 28 */ { QT_TRANSLATE_NOOP("tavoFont", "Abnormal inverter capacitance"),                     QT_TRANSLATE_NOOP("tavoFont", "Abnormal inverter capacitance disappear"),                     EventUse::Plain,    EventSeverity::Critical    },
    /* 29 */ { QT_TRANSLATE_NOOP("tavoFont", "Fan fault"),                                         QT_TRANSLATE_NOOP("tavoFont", "Fan fault disappear"),                                         EventUse::Plain,    EventSeverity::Critical    },
    /* 30 */ { QT_TRANSLATE_NOOP("tavoFont", "EPO"),                                               QT_TRANSLATE_NOOP("tavoFont", "EPO disappear"),                                               EventUse::Plain,    EventSeverity::Critical    },
    /* 31 */ { QT_TRANSLATE_NOOP("tavoFont", "Abnormal SPS"),                                      QT_TRANSLATE_NOOP("tavoFont", "Abnormal SPS disappear"),                                      EventUse::Plain,    EventSeverity::Critical    },
    /* 32 */ { QT_TRANSLATE_NOOP("tavoFont", "Reserved 32"),                                       QT_TRANSLATE_NOOP("tavoFont", "Reserved 32 disappear"),                                       EventUse::Reserved, EventSeverity::Information },
    /* 33 */ { QT_TRANSLATE_NOOP("tavoFont", "Reserved 33"),                                       QT_TRANSLATE_NOOP("tavoFont", "Reserved 33 disappear"),                                       EventUse::Reserved, EventSeverity::Information },
    /* 34 */ { QT_TRANSLATE_NOOP("tavoFont", "Reserved 34"),                                       QT_TRANSLATE_NOOP("tavoFont", "Reserved 34 disappear"),                                       EventUse::Reserved, EventSeverity::Information },
    /* 35 */ { QT_TRANSLATE_NOOP("tavoFont", "Reserved 35"),                                       QT_TRANSLATE_NOOP("tavoFont", "Reserved 35 disappear"),                                       EventUse::Reserved, EventSeverity::Information },
    /* 36 */ { QT_TRANSLATE_NOOP("tavoFont", "Reserved 36"),                                       QT_TRANSLATE_NOOP("tavoFont", "Reserved 36 disappear"),                                       EventUse::Reserved, EventSeverity::Information },
    /* 37 */ { QT_TRANSLATE_NOOP("tavoFont", "Reserved 37"),                                       QT_TRANSLATE_NOOP("tavoFont", "Reserved 37 disappear"),                                       EventUse::Reserved, EventSeverity::Information },
    /* 38 */ { QT_TRANSLATE_NOOP("tavoFont", "Reserved 38"),                                       QT_TRANSLATE_NOOP("tavoFont", "Reserved 38 disappear"),                                       EventUse::Reserved, EventSeverity::Information },
    /* 39 */ { QT_TRANSLATE_NOOP("tavoFont", "Reserved 39"),                                       QT_TRANSLATE_NOOP("tavoFont", "Reserved 39 disappear"),                                       EventUse::Reserved, EventSeverity::Information },
    /* 40 */ { QT_TRANSLATE_NOOP("tavoFont", "Reserved 40"),                                       QT_TRANSLATE_NOOP("tavoFont", "Reserved 40 disappear"),                                       EventUse::Reserved, EventSeverity::Information },
    /* 41 */ { QT_TRANSLATE_NOOP("tavoFont", "Reserved 41"),                                       QT_TRANSLATE_NOOP("tavoFont", "Reserved 41 disappear"),                                       EventUse::Reserved, EventSeverity::Information },
    /* 42 */ { QT_TRANSLATE_NOOP("tavoFont", "Reserved 42"),                                       QT_TRANSLATE_NOOP("tavoFont", "Reserved 42 disappear"),                                       EventUse::Reserved, EventSeverity::Information },
    /* 43 */ { QT_TRANSLATE_NOOP("tavoFont", "Reserved 43"),                                       QT_TRANSLATE_NOOP("tavoFont", "Reserved 43 disappear"),                                       EventUse::Reserved, EventSeverity::Information },
    /* 44 */ { QT_TRANSLATE_NOOP("tavoFont", "Reserved 44"),                                       QT_TRANSLATE_NOOP("tavoFont", "Reserved 44 disappear"),                                       EventUse::Reserved, EventSeverity::Information },
    /* 45 */ { QT_TRANSLATE_NOOP("tavoFont", "Reserved 45"),                                       QT_TRANSLATE_NOOP("tavoFont", "Reserved 45 disappear"),                                       EventUse::Reserved, EventSeverity::Information },
    /* 46 */ { QT_TRANSLATE_NOOP("tavoFont", "Reserved 46"),                                       QT_TRANSLATE_NOOP("tavoFont", "Reserved 46 disappear"),                                       EventUse::Reserved, EventSeverity::Information },
    /* 47 */ { QT_TRANSLATE_NOOP("tavoFont", "Reserved 47"),                                       QT_TRANSLATE_NOOP("tavoFont", "Reserved 47 disappear"),                                       EventUse::Reserved, EventSeverity::Information },
    /* 48 */ { QT_TRANSLATE_NOOP("tavoFont", "Abnormal parallel cables"),                          QT_TRANSLATE_NOOP("tavoFont", "Abnormal parallel cables disappear"),                          EventUse::Plain,    EventSeverity::Warning     },
    /* 49 */ { QT_TRANSLATE_NOOP("tavoFont", "Physical address conflict"),                         QT_TRANSLATE_NOOP("tavoFont", "Physical address conflict disappear"),                         EventUse::Plain,    EventSeverity::Warning     },
    /* 50 */ { QT_TRANSLATE_NOOP("tavoFont", "Battery reversed"),                                  QT_TRANSLATE_NOOP("tavoFont", "Battery reversed disappear"),                                  EventUse::Plain,    EventSeverity::Critical    },
    /* 51 */ { QT_TRANSLATE_NOOP("tavoFont", "Overload alram"),                                    QT_TRANSLATE_NOOP("tavoFont", "Overload alram disappear"),                                    EventUse::Plain,    EventSeverity::Critical    },
    /* 52 */ { QT_TRANSLATE_NOOP("tavoFont", "Battery disconnected"),                              QT_TRANSLATE_NOOP("tavoFont", "Battery disconnected disappear"),                              EventUse::Plain,    EventSeverity::Critical    },
    /* 53 */ { QT_TRANSLATE_NOOP("tavoFont", "Input over current"),                                QT_TRANSLATE_NOOP("tavoFont", "Input over current disappear"),                                EventUse::Plain,    EventSeverity::Warning     },
    /* 54 */ { QT_TRANSLATE_NOOP("tavoFont", "Battery voltage high"),                              QT_TRANSLATE_NOOP("tavoFont", "Battery voltage high disappear"),                              EventUse::Plain,    EventSeverity::Warning     },
    /* 55 */ { QT_TRANSLATE_NOOP("tavoFont", "Abnormal boot"),                                     QT_TRANSLATE_NOOP("tavoFont", "Abnormal boot disappear"),                                     EventUse::Plain,    EventSeverity::Warning     },
    /* 56 */ { QT_TRANSLATE_NOOP("tavoFont", "Charger fault"),                                     QT_TRANSLATE_NOOP("tavoFont", "Charger fault disappear"),                                     EventUse::Plain,    EventSeverity::Critical    },
    /* 57 */ { QT_TRANSLATE_NOOP("tavoFont", "Abnormal EEPROM"),                                   QT_TRANSLATE_NOOP("tavoFont", "Abnormal EEPROM disappear"),                                   EventUse::Plain,    EventSeverity::Warning     },
    /* 58 */ { QT_TRANSLATE_NOOP("tavoFont", "Input over current time out"),                       QT_TRANSLATE_NOOP("tavoFont", "Input over current time out disappear"),                       EventUse::Plain,    EventSeverity::Warning     },
    /* 59 */ { QT_TRANSLATE_NOOP("tavoFont", "Battery voltage low"),                               QT_TRANSLATE_NOOP("tavoFont", "Battery voltage low disappear"),                               EventUse::Plain,    EventSeverity::Critical    },
    /* 60 */ { QT_TRANSLATE_NOOP("tavoFont", "UPS need maintenance"),                              QT_TRANSLATE_NOOP("tavoFont", "UPS need maintenance disappear"),                              EventUse::Plain,    EventSeverity::Warning     },
    /* 61 */ { QT_TRANSLATE_NOOP("tavoFont", "Abnormal synchronous pulse loss"),                   QT_TRANSLATE_NOOP("tavoFont", "Abnormal synchronous pulse loss disappear"),                   EventUse::Plain,    EventSeverity::Warning     },
    /* 62 */ { QT_TRANSLATE_NOOP("tavoFont", "Abnormal synchronous signal"),                       QT_TRANSLATE_NOOP("tavoFont", "Abnormal synchronous signal disappear"),                       EventUse::Plain,    EventSeverity::Warning     },
    /* 63 */ { QT_TRANSLATE_NOOP("tavoFont", "Abnormal CAN communicaiton"),                        QT_TRANSLATE_NOOP("tavoFont", "Abnormal CAN communicaiton disappear"),                        EventUse::Plain,    EventSeverity::Warning     },
    /* 64 */ { QT_TRANSLATE_NOOP("tavoFont", "Bypass volt high"),                                  QT_TRANSLATE_NOOP("tavoFont", "Bypass volt high disappear"),                                  EventUse::Plain,    EventSeverity::Warning     },
    /* 65 */ { QT_TRANSLATE_NOOP("tavoFont", "Bypass fault"),                                      QT_TRANSLATE_NOOP("tavoFont", "Bypass fault disappear"),                                      EventUse::Plain,    EventSeverity::Critical    },
    /* 66 */ { QT_TRANSLATE_NOOP("tavoFont", "Input volt high"),                                   QT_TRANSLATE_NOOP("tavoFont", "Input volt high disappear"),                                   EventUse::Plain,    EventSeverity::Warning     },
    /* 67 */ { QT_TRANSLATE_NOOP("tavoFont", "Abnormal input frequency"),                          QT_TRANSLATE_NOOP("tavoFont", "Abnormal input frequency disappear"),                          EventUse::Plain,    EventSeverity::Warning     },
    /* 68 */ { QT_TRANSLATE_NOOP("tavoFont", "Bypass frequency over track"),                       QT_TRANSLATE_NOOP("tavoFont", "Bypass frequency over track disappear"),                       EventUse::Plain,    EventSeverity::Warning     },
    /* 69 */ { QT_TRANSLATE_NOOP("tavoFont", "Over transfer times between bypass and inverter"),   QT_TRANSLATE_NOOP("tavoFont", "Over transfer times between bypass and inverter disappear"),   EventUse::Plain,    EventSeverity::Warning     },
    /* 70 */ { QT_TRANSLATE_NOOP("tavoFont", "End of discharge"),                                  QT_TRANSLATE_NOOP("tavoFont", "End of discharge disappear"),                                  EventUse::Plain,    EventSeverity::Critical    },
    /* 71 */ { QT_TRANSLATE_NOOP("tavoFont", "Battery test success"),                              QT_TRANSLATE_NOOP("tavoFont", "Battery test success disappear"),                              EventUse::Plain,    EventSeverity::Information },
    /* 72 */ { QT_TRANSLATE_NOOP("tavoFont", "Forbidden startup UPS"),                             QT_TRANSLATE_NOOP("tavoFont", "Forbidden startup UPS disappear"),                             EventUse::Plain,    EventSeverity::Warning     },
    /* 73 */ { QT_TRANSLATE_NOOP("tavoFont", "Battery test fail"),                                 QT_TRANSLATE_NOOP("tavoFont", "Battery test fail disappear"),                                 EventUse::Plain,    EventSeverity::Warning     },
    /* 74 */ { QT_TRANSLATE_NOOP("tavoFont", "Parallel current unbalance"),                        QT_TRANSLATE_NOOP("tavoFont", "Parallel current unbalance disappear"),                        EventUse::Plain,    EventSeverity::Warning     },
    /* 75 */ { QT_TRANSLATE_NOOP("tavoFont", "Abnormal inverter phase lock"),                      QT_TRANSLATE_NOOP("tavoFont", "Abnormal inverter phase lock disappear"),                      EventUse::Plain,    EventSeverity::Warning     },
    /* 76 */ { QT_TRANSLATE_NOOP("tavoFont", "Battery maintenance success"),                       QT_TRANSLATE_NOOP("tavoFont", "Battery maintenance success disappear"),                       EventUse::Plain,    EventSeverity::Information },
    /* 77 */ { QT_TRANSLATE_NOOP("tavoFont", "Abnormal battery maintenance"),                      QT_TRANSLATE_NOOP("tavoFont", "Abnormal battery maintenance disappear"),                      EventUse::Plain,    EventSeverity::Warning     },
    /* 78 */ { QT_TRANSLATE_NOOP("tavoFont", "Input current unbalance"),                           QT_TRANSLATE_NOOP("tavoFont", "Input current unbalance disappear"),                           EventUse::Plain,    EventSeverity::Warning     },
    /* 79 */ { QT_TRANSLATE_NOOP("tavoFont", "Initial system error"),                              QT_TRANSLATE_NOOP("tavoFont", "Initial system error disappear"),                              EventUse::Plain,    EventSeverity::Warning     },
    /* 80 */ { QT_TRANSLATE_NOOP("tavoFont", "Abnormal PFC"),                                      QT_TRANSLATE_NOOP("tavoFont", "Abnormal PFC disappear"),                                      EventUse::Plain,    EventSeverity::Warning     },
    /* 81 */ { QT_TRANSLATE_NOOP("tavoFont", "Over transfer times between battery and grid"),      QT_TRANSLATE_NOOP("tavoFont", "Over transfer times between battery and grid disappear"),      EventUse::Plain,    EventSeverity::Warning     },
    /* 82 */ { QT_TRANSLATE_NOOP("tavoFont", "Abnormal input"),                                    QT_TRANSLATE_NOOP("tavoFont", "Abnormal input disappear"),                                    EventUse::Plain,    EventSeverity::Warning     },
    /* 83 */ { QT_TRANSLATE_NOOP("tavoFont", "Abnormal bypass"),                                   QT_TRANSLATE_NOOP("tavoFont", "Abnormal bypass disappear"),                                   EventUse::Plain,    EventSeverity::Warning     },
    /* 84 */ { QT_TRANSLATE_NOOP("tavoFont", "Abnormal bypass frequency"),                         QT_TRANSLATE_NOOP("tavoFont", "Abnormal bypass frequency disappear"),                         EventUse::Plain,    EventSeverity::Warning     },
    /* 85 */ { QT_TRANSLATE_NOOP("tavoFont", "Inverter and output volt is different"),             QT_TRANSLATE_NOOP("tavoFont", "Inverter and output volt is different disappear"),             EventUse::Plain,    EventSeverity::Warning     },
    /* 86 */ { QT_TRANSLATE_NOOP("tavoFont", "Abnormal battery volt"),                             QT_TRANSLATE_NOOP("tavoFont", "Abnormal battery volt disappear"),                             EventUse::Plain,    EventSeverity::Warning     },
    /* 87 */ { QT_TRANSLATE_NOOP("tavoFont", "Bypass and output volt is different"),               QT_TRANSLATE_NOOP("tavoFont", "Bypass and output volt is different disappear"),               EventUse::Plain,    EventSeverity::Warning     },
    /* 88 */ { QT_TRANSLATE_NOOP("tavoFont", "Abnormal inverter volt"),                            QT_TRANSLATE_NOOP("tavoFont", "Abnormal inverter volt disappear"),                            EventUse::Plain,    EventSeverity::Warning     },
    /* 89 */ { QT_TRANSLATE_NOOP("tavoFont", "Maintenance breaker connected"),                     QT_TRANSLATE_NOOP("tavoFont", "Maintenance breaker connected disappear"),                     EventUse::Plain,    EventSeverity::Warning     },
    /* 90 */ { QT_TRANSLATE_NOOP("tavoFont", "Frequent overheating"),                              QT_TRANSLATE_NOOP("tavoFont", "Frequent overheating disappear"),                              EventUse::Plain,    EventSeverity::Warning     },
    /* 91 */ { QT_TRANSLATE_NOOP("tavoFont", "Parallel battery number settings are inconsistent"), QT_TRANSLATE_NOOP("tavoFont", "Parallel battery number settings are inconsistent disappear"), EventUse::Plain,    EventSeverity::Warning     },
    /* 92 */ { QT_TRANSLATE_NOOP("tavoFont", "Abnormal battery temperature compensation"),         QT_TRANSLATE_NOOP("tavoFont", "Abnormal battery temperature compensation disappear"),         EventUse::Plain,    EventSeverity::Warning     },
    /* 93 */ { QT_TRANSLATE_NOOP("tavoFont", "Unstable bypass voltage"),                           QT_TRANSLATE_NOOP("tavoFont", "Unstable bypass voltage disappear"),                           EventUse::Plain,    EventSeverity::Warning     },
    /* 94 */ { QT_TRANSLATE_NOOP("tavoFont", "Test mode"),                                         QT_TRANSLATE_NOOP("tavoFont", "Test mode disappear"),                                         EventUse::Plain,    EventSeverity::Information },
    /* 95 */ { QT_TRANSLATE_NOOP("tavoFont", "Frequent overload"),                                 QT_TRANSLATE_NOOP("tavoFont", "Frequent overload disappear"),                                 EventUse::Plain,    EventSeverity::Warning     },
};
// clang-format on

/** The events that the host is told a second time, as events of their own. */
constexpr SpecialFlagRow specialFlags[] = {
    { 59, BatteryLowEvent },
    { 82, AbnormalInputEvent },
};

} // namespace kx300
