#pragma once

/** Types of the events posted to the host; the numbers are contract. */
enum HostEvent : int {
    LinkRestoredEvent = 1040,
    LinkLostEvent = 1041,
    HistoryDownloadedEvent = 1042,
    StatusChangedEvent = 2001,
    FlagChangedEvent = 2006,
    DataReportEvent = 2007,
    AbnormalInputEvent = 2009,
    BatteryLowEvent = 2010,
};
