<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>DaysDialog</name>
    <message numerus="yes">
        <source>Last %n day(s)</source>
        <translation>
            <numerusform>Last day</numerusform>
            <numerusform>Last %n days</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>LogPage</name>
    <message numerus="yes">
        <source>%n line(s) came faster than this view could take them. The log file has them.</source>
        <translation>
            <numerusform>%n line came faster than this view could take it. The log file has it.</numerusform>
            <numerusform>%n lines came faster than this view could take them. The log file has them.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>MachineView</name>
    <message numerus="yes">
        <source>The machine has %n state(s) and is too large for a picture.</source>
        <translation>
            <numerusform>The machine has %n state and is too large for a picture.</numerusform>
            <numerusform>The machine has %n states and is too large for a picture.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>zeltools::quick::MachineView</name>
    <message numerus="yes">
        <source>The machine has %n state(s) and is too large for a picture.</source>
        <translation>
            <numerusform>The machine has %n state and is too large for a picture.</numerusform>
            <numerusform>The machine has %n states and is too large for a picture.</numerusform>
        </translation>
    </message>
</context>
</TS>
