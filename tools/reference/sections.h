#pragma once

#include "family.h"

#include <QString>

/** The sections of the page, each with its heading; the family's tables are their only source. */
QString measurementSections(const Family &family);
QString stateSection(const Family &family);
QString settingSections(const Family &family);
QString eventSection(const Family &family);
QString historySection(const HistoryTables &history);
QString dataLogSection(const Family &family);
QString commandSection(const Family &family);
