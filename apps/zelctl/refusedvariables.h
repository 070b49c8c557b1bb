#pragma once

/// Puts the variables that the program has set aside before the library was loaded back into the
/// process environment.
///
/// A switch that refuses its value in the environment throws while the library is loaded, which
/// ends any program that uses it. The program that shows such values has to get past that, so these
/// variables are missing from the environment until main() calls this function. The switches
/// themselves never see the values.
void putRefusedVariablesBack();
