#pragma once

/// Writes the log lines, events and kernel lines of a machine that has been at work for a while,
/// among them what a screen must show as it is: markup, rubbish bytes and a very long line.
void writeSampleLines();

/// Writes the log lines alone.
void writeSampleLog();
