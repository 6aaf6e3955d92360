#pragma once

class ModbusLine;

/** Downloads the device's history into "./history.txt": a line for each record, oldest first, of
 *  seven decimal numbers separated by blanks (number, content, status, day, low and high word of
 *  the second in the day, mode). The file is complete, or it is left as it was.
 *  @return false when the device did not answer, or the file could not be written */
[[nodiscard]] bool downloadHistory(ModbusLine &line);
