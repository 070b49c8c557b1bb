<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>BundlePlaces</name>
    <message>
        <source>Folder of the application</source>
        <translation>Ordner der Anwendung</translation>
    </message>
    <message>
        <source>%1 free of %2</source>
        <translation>%1 von %2 frei</translation>
    </message>
    <message>
        <source>Write-protected</source>
        <translation>Schreibgeschützt</translation>
    </message>
    <message>
        <source>No stick</source>
        <translation>Kein USB-Stick</translation>
    </message>
    <message>
        <source>Plug in a USB stick. It appears here when the system has mounted it below /media, /run/media or /mnt.</source>
        <translation>Stecken Sie einen USB-Stick ein. Er erscheint hier, sobald das System ihn unter /media, /run/media oder /mnt eingehängt hat.</translation>
    </message>
</context>
<context>
    <name>BundleProgress</name>
    <message>
        <source>The bundle is complete.</source>
        <translation>Das Paket ist vollständig.</translation>
    </message>
    <message>
        <source>Cancelled. No file was left.</source>
        <translation>Abgebrochen. Es wurde keine Datei hinterlassen.</translation>
    </message>
    <message>
        <source>One file for the factory: log files, events, the kernel log, crash reports, switches without their secrets, versions, and the state of disks and memory.</source>
        <translation>Eine Datei für das Werk: Protokolle, Ereignisse, Kernelprotokoll, Absturzberichte, Schalter ohne Geheimnisse, Versionen sowie der Zustand von Datenträgern und Speicher.</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%1 %</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Create the bundle</source>
        <translation>Paket erstellen</translation>
    </message>
</context>
<context>
    <name>Catalogue</name>
    <message>
        <source>Overview</source>
        <extracomment>The names of pages stand below icons, too, where about ten letters have room.</extracomment>
        <translation>Überblick</translation>
    </message>
    <message>
        <source>Events</source>
        <translation>Ereignisse</translation>
    </message>
    <message>
        <source>Log</source>
        <translation>Protokoll</translation>
    </message>
    <message>
        <source>Switches</source>
        <translation>Schalter</translation>
    </message>
    <message>
        <source>Machine</source>
        <translation>Maschine</translation>
    </message>
    <message>
        <source>Threads</source>
        <translation>Threads</translation>
    </message>
    <message>
        <source>Kernel</source>
        <translation>Kernel</translation>
    </message>
    <message>
        <source>Files</source>
        <translation>Dateien</translation>
    </message>
    <message>
        <source>Date and time</source>
        <translation>Datum und Uhrzeit</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Uhrzeit</translation>
    </message>
    <message>
        <source>Support</source>
        <translation>Support</translation>
    </message>
</context>
<context>
    <name>ClockSetting</name>
    <message>
        <source>The clock is set.</source>
        <translation>Die Uhr ist gestellt.</translation>
    </message>
    <message>
        <source>Day</source>
        <translation>Tag</translation>
    </message>
    <message>
        <source>Month</source>
        <translation>Monat</translation>
    </message>
    <message>
        <source>Year</source>
        <translation>Jahr</translation>
    </message>
    <message>
        <source>Hour</source>
        <translation>Stunde</translation>
    </message>
    <message>
        <source>Minute</source>
        <translation>Minute</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Verwerfen</translation>
    </message>
    <message>
        <source>Set the clock</source>
        <translation>Uhr stellen</translation>
    </message>
</context>
<context>
    <name>CrashRows</name>
    <message>
        <source>No crash</source>
        <translation>Kein Absturz</translation>
    </message>
    <message>
        <source>The folder has no crash report.</source>
        <translation>Der Ordner enthält keinen Absturzbericht.</translation>
    </message>
    <message>
        <source>The application has not called CrashReports::install().</source>
        <translation>Die Anwendung hat CrashReports::install() nicht aufgerufen.</translation>
    </message>
    <message>
        <source>Crash reports are off</source>
        <translation>Absturzberichte sind aus</translation>
    </message>
</context>
<context>
    <name>DaysDialog</name>
    <message>
        <source>All days</source>
        <translation>Alle Tage</translation>
    </message>
    <message>
        <source>Today</source>
        <translation>Heute</translation>
    </message>
    <message>
        <source>Previous month</source>
        <translation>Voriger Monat</translation>
    </message>
    <message>
        <source>Next month</source>
        <translation>Nächster Monat</translation>
    </message>
    <message numerus="yes">
        <source>Last %n day(s)</source>
        <translation>
            <numerusform>Letzter Tag</numerusform>
            <numerusform>Letzte %n Tage</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>Dialog</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>EventKinds</name>
    <message>
        <source>Other</source>
        <translation>Sonstiges</translation>
    </message>
    <message>
        <source>Menu access</source>
        <translation>Menüzugriff</translation>
    </message>
    <message>
        <source>Menu parameter</source>
        <translation>Menüparameter</translation>
    </message>
    <message>
        <source>Cleaning</source>
        <translation>Reinigung</translation>
    </message>
    <message>
        <source>Dispensed drink</source>
        <translation>Getränkeausgabe</translation>
    </message>
    <message>
        <source>Database error</source>
        <translation>Datenbankfehler</translation>
    </message>
    <message>
        <source>CPU fan</source>
        <translation>CPU-Lüfter</translation>
    </message>
    <message>
        <source>Update</source>
        <translation>Aktualisierung</translation>
    </message>
    <message>
        <source>Configuration</source>
        <translation>Konfiguration</translation>
    </message>
    <message>
        <source>Application start</source>
        <translation>Programmstart</translation>
    </message>
    <message>
        <source>Ingredient level</source>
        <translation>Zutatenfüllstand</translation>
    </message>
    <message>
        <source>Waste level</source>
        <translation>Abfallfüllstand</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <source>Energy saving</source>
        <translation>Energiesparen</translation>
    </message>
    <message>
        <source>All events</source>
        <translation>Alle Ereignisse</translation>
    </message>
</context>
<context>
    <name>EventsPage</name>
    <message>
        <source>Events</source>
        <translation>Ereignisse</translation>
    </message>
    <message>
        <source>All days</source>
        <translation>Alle Tage</translation>
    </message>
    <message>
        <source>No events</source>
        <translation>Keine Ereignisse</translation>
    </message>
    <message>
        <source>The machine has not logged an event yet.</source>
        <translation>Die Maschine hat noch kein Ereignis protokolliert.</translation>
    </message>
    <message>
        <source>No event matches the filters above. Choose another kind or more days.</source>
        <translation>Kein Ereignis passt zu den Filtern oben. Wählen Sie eine andere Art oder mehr Tage.</translation>
    </message>
</context>
<context>
    <name>FileParts</name>
    <message>
        <source>Earlier</source>
        <translation>Davor</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>Later</source>
        <translation>Danach</translation>
    </message>
    <message>
        <source>End of the file</source>
        <translation>Ende der Datei</translation>
    </message>
</context>
<context>
    <name>FileText</name>
    <message>
        <source>%1 is deleted.</source>
        <translation>%1 wurde gelöscht.</translation>
    </message>
    <message>
        <source>Delete this file?</source>
        <translation>Diese Datei löschen?</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Zurück</translation>
    </message>
    <message>
        <source>Choose a file</source>
        <translation>Wählen Sie eine Datei</translation>
    </message>
    <message>
        <source>This file is not text</source>
        <translation>Diese Datei ist kein Text</translation>
    </message>
    <message>
        <source>The file cannot be read</source>
        <translation>Die Datei ist nicht lesbar</translation>
    </message>
</context>
<context>
    <name>FilesPage</name>
    <message>
        <source>Files</source>
        <translation>Dateien</translation>
    </message>
    <message>
        <source>Crash reports</source>
        <translation>Absturzberichte</translation>
    </message>
</context>
<context>
    <name>FolderRows</name>
    <message>
        <source>The folder is empty</source>
        <translation>Der Ordner ist leer</translation>
    </message>
    <message>
        <source>The folder cannot be read</source>
        <translation>Der Ordner ist nicht lesbar</translation>
    </message>
    <message>
        <source>There is no folder to show</source>
        <translation>Kein Ordner vorhanden</translation>
    </message>
    <message>
        <source>It was deleted or unplugged, or the application may not read it. Its files appear when it is back.</source>
        <translation>Er wurde gelöscht oder abgezogen, oder die Anwendung darf ihn nicht lesen. Seine Dateien erscheinen, wenn er wieder da ist.</translation>
    </message>
    <message>
        <source>The application names the folders of this page by the property folders of Service.</source>
        <translation>Die Anwendung nennt die Ordner dieser Seite mit der Eigenschaft folders von Service.</translation>
    </message>
</context>
<context>
    <name>FollowList</name>
    <message>
        <source>Newest line</source>
        <translation>Neueste Zeile</translation>
    </message>
</context>
<context>
    <name>KernelPage</name>
    <message>
        <source>Kernel</source>
        <translation>Kernel</translation>
    </message>
    <message>
        <source>Capturing</source>
        <translation>Aufzeichnung läuft</translation>
    </message>
    <message>
        <source>Not capturing</source>
        <translation>Keine Aufzeichnung</translation>
    </message>
    <message>
        <source>The machine lets only its administrator read the kernel log (kernel.dmesg_restrict is 1).</source>
        <translation>Nur der Administrator der Maschine darf das Kernelprotokoll lesen (kernel.dmesg_restrict ist 1).</translation>
    </message>
    <message>
        <source>No lines</source>
        <translation>Keine Zeilen</translation>
    </message>
    <message>
        <source>The kernel log is not captured</source>
        <translation>Das Kernelprotokoll wird nicht aufgezeichnet</translation>
    </message>
    <message>
        <source>No line contains the text above.</source>
        <translation>Keine Zeile enthält den Text oben.</translation>
    </message>
    <message>
        <source>The kernel has not written a line yet.</source>
        <translation>Der Kernel hat noch keine Zeile geschrieben.</translation>
    </message>
    <message>
        <source>The application starts the capture with Dmesg::start(). A desktop build never captures.</source>
        <translation>Die Anwendung startet die Aufzeichnung mit Dmesg::start(). Ein Desktop-Build zeichnet nie auf.</translation>
    </message>
</context>
<context>
    <name>LineDialog</name>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>LogFiles</name>
    <message>
        <source>General</source>
        <translation>Allgemein</translation>
    </message>
    <message>
        <source>Events</source>
        <translation>Ereignisse</translation>
    </message>
    <message>
        <source>Grinder</source>
        <translation>Mühle</translation>
    </message>
    <message>
        <source>Capsules</source>
        <translation>Kapseln</translation>
    </message>
    <message>
        <source>Actuator board</source>
        <translation>Aktorplatine</translation>
    </message>
</context>
<context>
    <name>LogLevels</name>
    <message>
        <source>Debug</source>
        <translation>Debug</translation>
    </message>
    <message>
        <source>Info</source>
        <translation>Info</translation>
    </message>
    <message>
        <source>Event</source>
        <translation>Ereignis</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>Critical</source>
        <translation>Kritisch</translation>
    </message>
    <message>
        <source>Grinder</source>
        <translation>Mühle</translation>
    </message>
    <message>
        <source>Capsule</source>
        <translation>Kapsel</translation>
    </message>
    <message>
        <source>Actuator board</source>
        <translation>Aktorplatine</translation>
    </message>
</context>
<context>
    <name>LogPage</name>
    <message>
        <source>Log</source>
        <translation>Protokoll</translation>
    </message>
    <message>
        <source>From %1</source>
        <translation>Ab %1</translation>
    </message>
    <message>
        <source>All modules</source>
        <translation>Alle Module</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Anhalten</translation>
    </message>
    <message numerus="yes">
        <source>%n line(s) came faster than this view could take them. The log file has them.</source>
        <translation>
            <numerusform>%n Zeile kam schneller, als diese Ansicht sie aufnehmen konnte. Die Protokolldatei enthält sie.</numerusform>
            <numerusform>%n Zeilen kamen schneller, als diese Ansicht sie aufnehmen konnte. Die Protokolldatei enthält sie.</numerusform>
        </translation>
    </message>
    <message>
        <source>No lines</source>
        <translation>Keine Zeilen</translation>
    </message>
    <message>
        <source>No line matches the filters above.</source>
        <translation>Keine Zeile passt zu den Filtern oben.</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>Fortsetzen</translation>
    </message>
    <message>
        <source>Clear the view</source>
        <translation>Ansicht leeren</translation>
    </message>
    <message>
        <source>This program has no folders for log files.</source>
        <translation>Dieses Programm hat keine Ordner für Protokolldateien.</translation>
    </message>
    <message>
        <source>New lines appear here as soon as they are logged.</source>
        <translation>Neue Zeilen erscheinen hier, sobald sie protokolliert werden.</translation>
    </message>
</context>
<context>
    <name>MachinePage</name>
    <message>
        <source>Machine</source>
        <translation>Maschine</translation>
    </message>
    <message>
        <source>Not running</source>
        <translation>Läuft nicht</translation>
    </message>
    <message>
        <source>for %1</source>
        <translation>seit %1</translation>
    </message>
    <message>
        <source>Last changes</source>
        <translation>Letzte Übergänge</translation>
    </message>
    <message>
        <source>Smaller</source>
        <translation>Kleiner</translation>
    </message>
    <message>
        <source>Larger</source>
        <translation>Größer</translation>
    </message>
    <message>
        <source>No machine to show</source>
        <translation>Keine Zustandsmaschine zu zeigen</translation>
    </message>
    <message>
        <source>The application offers its state machines to this page by ViewedMachines::offer().</source>
        <translation>Die Anwendung bietet dieser Seite ihre Zustandsmaschinen mit ViewedMachines::offer() an.</translation>
    </message>
    <message>
        <source>Fit to view</source>
        <translation>Einpassen</translation>
    </message>
</context>
<context>
    <name>MachinePicture</name>
    <message>
        <source>No picture</source>
        <translation>Kein Bild</translation>
    </message>
</context>
<context>
    <name>MachineView</name>
    <message numerus="yes">
        <source>The machine has %n state(s) and is too large for a picture.</source>
        <translation>
            <numerusform>Die Zustandsmaschine hat %n Zustand und ist zu groß für ein Bild.</numerusform>
            <numerusform>Die Zustandsmaschine hat %n Zustände und ist zu groß für ein Bild.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ModulesDialog</name>
    <message>
        <source>Log modules</source>
        <translation>Protokollmodule</translation>
    </message>
    <message>
        <source>A tap shows the lines of one module. The switch turns debug lines on.</source>
        <translation>Tippen zeigt nur die Zeilen eines Moduls. Der Schalter schaltet die Debug-Zeilen ein.</translation>
    </message>
    <message>
        <source>All modules</source>
        <translation>Alle Module</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>NetworkTime</name>
    <message>
        <source>Network time by ntpd</source>
        <translation>Netzwerkzeit durch ntpd</translation>
    </message>
    <message>
        <source>To get it: apt install ntp, and a server of pool.ntp.org in /etc/ntp.conf</source>
        <translation>So bekommen Sie es: apt install ntp und ein Server von pool.ntp.org in /etc/ntp.conf</translation>
    </message>
    <message>
        <source>Time zones</source>
        <translation>Zeitzonen</translation>
    </message>
    <message>
        <source>To get it: apt install tzdata</source>
        <translation>So bekommen Sie es: apt install tzdata</translation>
    </message>
    <message>
        <source>Network time by systemd</source>
        <translation>Netzwerkzeit durch systemd</translation>
    </message>
    <message>
        <source>To get it: apt install systemd-timesyncd</source>
        <translation>So bekommen Sie es: apt install systemd-timesyncd</translation>
    </message>
    <message>
        <source>Services</source>
        <translation>Dienste</translation>
    </message>
    <message>
        <source>Network time</source>
        <translation>Netzwerkzeit</translation>
    </message>
    <message>
        <source>No service</source>
        <translation>Kein Dienst</translation>
    </message>
    <message>
        <source>The application adds its services, such as service::Ntp, to the ServiceManager.</source>
        <translation>Die Anwendung fügt ihre Dienste, etwa service::Ntp, dem ServiceManager hinzu.</translation>
    </message>
    <message>
        <source>Packages</source>
        <translation>Pakete</translation>
    </message>
    <message>
        <source>Not supported by this machine</source>
        <translation>Von dieser Maschine nicht unterstützt</translation>
    </message>
</context>
<context>
    <name>OverviewPage</name>
    <message>
        <source>Overview</source>
        <translation>Überblick</translation>
    </message>
    <message>
        <source>Log files</source>
        <translation>Protokolldateien</translation>
    </message>
    <message>
        <source>Failing</source>
        <translation>Gestört</translation>
    </message>
    <message>
        <source>All written</source>
        <translation>Alle geschrieben</translation>
    </message>
    <message>
        <source>No line lost</source>
        <translation>Keine Zeile verloren</translation>
    </message>
    <message>
        <source>Date and time</source>
        <translation>Datum und Uhrzeit</translation>
    </message>
    <message>
        <source>Threads</source>
        <translation>Threads</translation>
    </message>
    <message>
        <source>Not watched</source>
        <translation>Nicht überwacht</translation>
    </message>
    <message>
        <source>One is late</source>
        <translation>Einer ist verspätet</translation>
    </message>
    <message>
        <source>All on time</source>
        <translation>Alle pünktlich</translation>
    </message>
    <message>
        <source>%1 watched</source>
        <translation>%1 überwacht</translation>
    </message>
    <message>
        <source>The library was built without the monitor.</source>
        <translation>Die Bibliothek wurde ohne die Überwachung gebaut.</translation>
    </message>
    <message>
        <source>Last crash</source>
        <translation>Letzter Absturz</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Keiner</translation>
    </message>
    <message>
        <source>There is no crash report.</source>
        <translation>Es gibt keinen Absturzbericht.</translation>
    </message>
    <message>
        <source>Switches</source>
        <translation>Schalter</translation>
    </message>
    <message>
        <source>%1 changed</source>
        <translation>%1 geändert</translation>
    </message>
    <message>
        <source>Memory and disk</source>
        <translation>Speicher und Datenträger</translation>
    </message>
    <message>
        <source>Memory</source>
        <translation>Arbeitsspeicher</translation>
    </message>
    <message>
        <source>Disk</source>
        <translation>Datenträger</translation>
    </message>
    <message>
        <source>Running for</source>
        <translation>Betriebszeit</translation>
    </message>
    <message>
        <source>%1, Linux %2</source>
        <translation>%1, Linux %2</translation>
    </message>
    <message>
        <source>Software</source>
        <translation>Software</translation>
    </message>
    <message>
        <source>No version</source>
        <translation>Ohne Version</translation>
    </message>
    <message>
        <source>%1
ZelTools %2, Qt %3</source>
        <translation>%1
ZelTools %2, Qt %3</translation>
    </message>
    <message>
        <source>State machines</source>
        <translation>Zustandsmaschinen</translation>
    </message>
    <message>
        <source>None shown</source>
        <translation>Keine gezeigt</translation>
    </message>
    <message>
        <source>The application offers none.</source>
        <translation>Die Anwendung bietet keine an.</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1: stopped</source>
        <translation>%1: steht</translation>
    </message>
    <message>
        <source>Lines lost: %1</source>
        <translation>Verlorene Zeilen: %1</translation>
    </message>
    <message>
        <source>This program has no folders for log files.</source>
        <translation>Dieses Programm hat keine Ordner für Protokolldateien.</translation>
    </message>
    <message>
        <source>One has stalled</source>
        <translation>Einer hängt</translation>
    </message>
    <message>
        <source>Defaults</source>
        <translation>Standardwerte</translation>
    </message>
    <message>
        <source>Model %1</source>
        <translation>Modell %1</translation>
    </message>
    <message>
        <source>Board build</source>
        <translation>Build für die Maschine</translation>
    </message>
    <message>
        <source>Desktop build</source>
        <translation>Build für den Desktop</translation>
    </message>
</context>
<context>
    <name>PageTurner</name>
    <message>
        <source>First page</source>
        <translation>Erste Seite</translation>
    </message>
    <message>
        <source>Page %1 of %2</source>
        <translation>Seite %1 von %2</translation>
    </message>
    <message>
        <source>Last page</source>
        <translation>Letzte Seite</translation>
    </message>
    <message>
        <source>Previous page</source>
        <translation>Vorige Seite</translation>
    </message>
    <message>
        <source>Next page</source>
        <translation>Nächste Seite</translation>
    </message>
</context>
<context>
    <name>Rail</name>
    <message>
        <source>Service</source>
        <translation>Service</translation>
    </message>
</context>
<context>
    <name>ScreenHeader</name>
    <message>
        <source>Read only</source>
        <translation>Nur lesen</translation>
    </message>
    <message>
        <source>Operator</source>
        <translation>Bediener</translation>
    </message>
    <message>
        <source>Technician</source>
        <translation>Techniker</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>SearchField</name>
    <message>
        <source>Search</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Clear the search</source>
        <translation>Suche löschen</translation>
    </message>
</context>
<context>
    <name>SupportPage</name>
    <message>
        <source>Support</source>
        <translation>Support</translation>
    </message>
    <message>
        <source>Where the bundle goes</source>
        <translation>Ziel des Pakets</translation>
    </message>
    <message>
        <source>Support bundle</source>
        <translation>Supportpaket</translation>
    </message>
    <message>
        <source>This build makes no support bundles</source>
        <translation>Dieser Build erstellt keine Supportpakete</translation>
    </message>
    <message>
        <source>Install Debian&apos;s package libarchive-dev and build the library with the CMake option ZELTOOLS_LIBARCHIVE.</source>
        <translation>Installieren Sie Debians Paket libarchive-dev und bauen Sie die Bibliothek mit der CMake-Option ZELTOOLS_LIBARCHIVE.</translation>
    </message>
</context>
<context>
    <name>SwitchDialog</name>
    <message>
        <source>%1. The build gives no value.</source>
        <translation>%1. Der Build gibt keinen Wert vor.</translation>
    </message>
    <message>
        <source>%1. The build gives the value %2.</source>
        <translation>%1. Der Build gibt den Wert %2 vor.</translation>
    </message>
    <message>
        <source>Set</source>
        <translation>Setzen</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>On</source>
        <translation>Ein</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>Aus</translation>
    </message>
    <message>
        <source>Back to the value of the build</source>
        <translation>Zurück zum Wert des Builds</translation>
    </message>
    <message>
        <source>The present value comes from the environment.</source>
        <translation>Der jetzige Wert kommt aus der Umgebung.</translation>
    </message>
    <message>
        <source>It is the present value.</source>
        <translation>Er ist der jetzige Wert.</translation>
    </message>
    <message>
        <source>No value is set.</source>
        <translation>Es ist kein Wert gesetzt.</translation>
    </message>
</context>
<context>
    <name>SwitchRow</name>
    <message>
        <source>not set</source>
        <translation>nicht gesetzt</translation>
    </message>
    <message>
        <source>empty</source>
        <translation>leer</translation>
    </message>
</context>
<context>
    <name>Switches</name>
    <message>
        <source>Enabled for debug build</source>
        <translation>Eingeschaltet im Debug-Build</translation>
    </message>
    <message>
        <source>Enabled on board build</source>
        <translation>Eingeschaltet im Build für die Maschine</translation>
    </message>
    <message>
        <source>Enabled on PC build</source>
        <translation>Eingeschaltet im Build für den PC</translation>
    </message>
    <message>
        <source>Enabled on Android</source>
        <translation>Eingeschaltet unter Android</translation>
    </message>
    <message>
        <source>Enabled on Linux</source>
        <translation>Eingeschaltet unter Linux</translation>
    </message>
    <message>
        <source>Enabled on Windows</source>
        <translation>Eingeschaltet unter Windows</translation>
    </message>
    <message>
        <source>Encrypt configuration database</source>
        <translation>Datenbank der Konfiguration verschlüsseln</translation>
    </message>
    <message>
        <source>Encrypt machine database</source>
        <translation>Datenbank der Maschine verschlüsseln</translation>
    </message>
    <message>
        <source>Force native gui</source>
        <translation>Native Oberfläche erzwingen</translation>
    </message>
    <message>
        <source>Force full screen mode</source>
        <translation>Vollbild erzwingen</translation>
    </message>
    <message>
        <source>Enabled on arietta build</source>
        <translation>Eingeschaltet im Build für Arietta</translation>
    </message>
    <message>
        <source>Enabled on Cadenza build</source>
        <translation>Eingeschaltet im Build für Cadenza</translation>
    </message>
    <message>
        <source>Enabled on sonata build</source>
        <translation>Eingeschaltet im Build für Sonata</translation>
    </message>
    <message>
        <source>Enabled on vivo build</source>
        <translation>Eingeschaltet im Build für Vivo</translation>
    </message>
    <message>
        <source>Enable field test logs</source>
        <translation>Protokolle für Feldtests einschalten</translation>
    </message>
    <message>
        <source>Enable lab test feature</source>
        <translation>Funktion für Labortests einschalten</translation>
    </message>
    <message>
        <source>Enable sonata sdk verbose output</source>
        <translation>Ausführliche Ausgaben des Sonata-SDK einschalten</translation>
    </message>
    <message>
        <source>Dump M4 debug to file</source>
        <translation>Debug-Ausgaben des M4 in eine Datei schreiben</translation>
    </message>
    <message>
        <source>Enable Self Learning tests</source>
        <translation>Selbstlerntests einschalten</translation>
    </message>
    <message>
        <source>Force usage of virtual can interface</source>
        <translation>Virtuelle CAN-Schnittstelle erzwingen</translation>
    </message>
    <message>
        <source>Enable CAN bus simulation</source>
        <translation>Simulation des CAN-Busses einschalten</translation>
    </message>
    <message>
        <source>Disable new canbus messages management</source>
        <translation>Neue Verarbeitung der CAN-Nachrichten ausschalten</translation>
    </message>
    <message>
        <source>Dump can to log file</source>
        <translation>CAN-Nachrichten in die Protokolldatei schreiben</translation>
    </message>
    <message>
        <source>Dump can to debug output</source>
        <translation>CAN-Nachrichten auf die Debug-Ausgabe schreiben</translation>
    </message>
    <message>
        <source>Set canbus interface path, e.g. can0 or /tmp/ttyS0</source>
        <translation>Pfad der CAN-Schnittstelle, z. B. can0 oder /tmp/ttyS0</translation>
    </message>
    <message>
        <source>Cold products simulation</source>
        <translation>Simulation der Kaltgetränke</translation>
    </message>
    <message>
        <source>CTG products simulation</source>
        <translation>Simulation der CTG-Produkte</translation>
    </message>
    <message>
        <source>Use real CAN bus over USB adapter</source>
        <translation>Echten CAN-Bus über einen USB-Adapter verwenden</translation>
    </message>
    <message>
        <source>Enable payment simulation over TCP interface</source>
        <translation>Zahlungssimulation über TCP einschalten</translation>
    </message>
    <message>
        <source>Enable payment over ERS protocol</source>
        <translation>Zahlung über das ERS-Protokoll einschalten</translation>
    </message>
    <message>
        <source>Enable payment simulation</source>
        <translation>Zahlungssimulation einschalten</translation>
    </message>
    <message>
        <source>Executive payment device simulator model (DEFAULT/UIC_180/MIZIP)</source>
        <translation>Modell des Simulators für das Executive-Zahlungsgerät (DEFAULT/UIC_180/MIZIP)</translation>
    </message>
    <message>
        <source>Cashless device 0 simulator model (Mizip/Microtronic/Nayax/AlwaysIdle/VendingCat/FakeAlwaysIdle/OPC</source>
        <translation>Modell des Simulators für das Bargeldlos-Gerät 0 (Mizip/Microtronic/Nayax/AlwaysIdle/VendingCat/FakeAlwaysIdle/OPC)</translation>
    </message>
    <message>
        <source>Cashless device 1 simulator model (Mizip/Microtronic/Nayax/AlwaysIdle/VendingCat/FakeAlwaysIdle/OPC</source>
        <translation>Modell des Simulators für das Bargeldlos-Gerät 1 (Mizip/Microtronic/Nayax/AlwaysIdle/VendingCat/FakeAlwaysIdle/OPC)</translation>
    </message>
    <message>
        <source>Run payment in main thread</source>
        <translation>Zahlung im Hauptthread ausführen</translation>
    </message>
    <message>
        <source>Always send configuration to plume device</source>
        <translation>Konfiguration immer an das Plume-Gerät senden</translation>
    </message>
    <message>
        <source>Dump payment logs to payment log file</source>
        <translation>Zahlungsprotokoll in dessen Protokolldatei schreiben</translation>
    </message>
    <message>
        <source>Dump payment logs to application output</source>
        <translation>Zahlungsprotokoll auf die Ausgabe der Anwendung schreiben</translation>
    </message>
    <message>
        <source>Dump payment Hi files to application output</source>
        <translation>Hi-Dateien der Zahlung auf die Ausgabe der Anwendung schreiben</translation>
    </message>
    <message>
        <source>Provide explicit payment method selection</source>
        <translation>Ausdrückliche Wahl der Zahlungsart anbieten</translation>
    </message>
    <message>
        <source>Disable watchdog</source>
        <translation>Watchdog ausschalten</translation>
    </message>
    <message>
        <source>Use QML screensaver</source>
        <translation>Bildschirmschoner in QML verwenden</translation>
    </message>
    <message>
        <source>Enable cup sensors simulation</source>
        <translation>Simulation der Bechersensoren einschalten</translation>
    </message>
    <message>
        <source>Enable extend lifetime feature in cup sensors simulation</source>
        <translation>Verlängerte Lebensdauer in der Simulation der Bechersensoren einschalten</translation>
    </message>
    <message>
        <source>Cup sensors simulation file path</source>
        <translation>Pfad der Datei für die Simulation der Bechersensoren</translation>
    </message>
    <message>
        <source>Dump cupsensor logs to cupsensors log file</source>
        <translation>Protokoll der Bechersensoren in deren Protokolldatei schreiben</translation>
    </message>
    <message>
        <source>VL6180X simulation on PC via I2C bus.
If disabled, default cup sensor is simulated.
(NOTE: VL6180X_SIMULATION_DEVICE takes effect only if CUPSENSOR_SIMULATION is enabled)</source>
        <translation>Simulation des VL6180X auf dem PC über den I2C-Bus.
Ohne sie wird der übliche Bechersensor simuliert.
(VL6180X_SIMULATION_DEVICE wirkt nur zusammen mit CUPSENSOR_SIMULATION.)</translation>
    </message>
    <message>
        <source>Hide payment from technical menu</source>
        <translation>Zahlung im technischen Menü verbergen</translation>
    </message>
    <message>
        <source>Dump I2C logs to logs</source>
        <translation>I2C-Protokoll in die Protokolldateien schreiben</translation>
    </message>
    <message>
        <source>Dump I2C logs to application output</source>
        <translation>I2C-Protokoll auf die Ausgabe der Anwendung schreiben</translation>
    </message>
    <message>
        <source>Show Halcyon server address and port</source>
        <translation>Adresse und Port des Halcyon-Servers zeigen</translation>
    </message>
    <message>
        <source>Show Halcyon server switch</source>
        <translation>Schalter für den Halcyon-Server zeigen</translation>
    </message>
    <message>
        <source>Disable Halcyon modem public IP address</source>
        <translation>Öffentliche IP-Adresse des Halcyon-Modems ausschalten</translation>
    </message>
    <message>
        <source>Enable Halcyon APN override</source>
        <translation>Eigenen APN für Halcyon erlauben</translation>
    </message>
    <message>
        <source>Show touchless server switch</source>
        <translation>Schalter für den Touchless-Server zeigen</translation>
    </message>
    <message>
        <source>Use vestaone version for windows</source>
        <translation>Vesta-One-Version für Windows verwenden</translation>
    </message>
    <message>
        <source>Disable keyboard buzzer on vesta one</source>
        <translation>Tastensummer der Vesta One ausschalten</translation>
    </message>
    <message>
        <source>Directly go to given menu (eg. 8.1.10) when entering vestaone technical menu</source>
        <translation>Im technischen Menü der Vesta One direkt dieses Menü öffnen (z. B. 8.1.10)</translation>
    </message>
    <message>
        <source>Enabled on android emulator</source>
        <translation>Eingeschaltet im Android-Emulator</translation>
    </message>
    <message>
        <source>Force android assets copy on startup</source>
        <translation>Android-Assets bei jedem Start kopieren</translation>
    </message>
    <message>
        <source>Android application package name</source>
        <translation>Paketname der Android-Anwendung</translation>
    </message>
    <message>
        <source>Android application activity</source>
        <translation>Activity der Android-Anwendung</translation>
    </message>
    <message>
        <source>Disable android task lock</source>
        <translation>Task-Sperre von Android ausschalten</translation>
    </message>
    <message>
        <source>Dump ERS protocol data to application output</source>
        <translation>Daten des ERS-Protokolls auf die Ausgabe der Anwendung schreiben</translation>
    </message>
    <message>
        <source>Dump ERS protocol data to log file</source>
        <translation>Daten des ERS-Protokolls in die Protokolldatei schreiben</translation>
    </message>
    <message>
        <source>Use ERS protocol for erogation</source>
        <translation>ERS-Protokoll für die Ausgabe verwenden</translation>
    </message>
    <message>
        <source>ERS master interface path on desktop</source>
        <translation>Pfad der ERS-Master-Schnittstelle auf dem Desktop</translation>
    </message>
    <message>
        <source>Disable power board keep alive</source>
        <translation>Lebenszeichen der Leistungsplatine ausschalten</translation>
    </message>
    <message>
        <source>Enable power board simulation</source>
        <translation>Simulation der Leistungsplatine einschalten</translation>
    </message>
    <message>
        <source>Ignore power board error status</source>
        <translation>Fehlerzustand der Leistungsplatine ignorieren</translation>
    </message>
    <message>
        <source>Disable power board temperature reading</source>
        <translation>Temperaturmessung der Leistungsplatine ausschalten</translation>
    </message>
    <message>
        <source>Force using CAN interface also on desktop</source>
        <translation>CAN-Schnittstelle auch auf dem Desktop erzwingen</translation>
    </message>
    <message>
        <source>No_UL_Limit_120</source>
        <translation>Ohne UL-Grenze 120</translation>
    </message>
    <message>
        <source>Force USB storage path</source>
        <translation>Pfad des USB-Speichers vorgeben</translation>
    </message>
    <message>
        <source>Fill all translations with sample</source>
        <translation>Alle Übersetzungen mit einem Mustertext füllen</translation>
    </message>
    <message>
        <source>Fill missing translations with sample</source>
        <translation>Fehlende Übersetzungen mit einem Mustertext füllen</translation>
    </message>
    <message>
        <source>Indicate Arietta Meridian</source>
        <translation>Kennzeichnet Arietta Meridian</translation>
    </message>
    <message>
        <source>Indicate Sonata Meridian</source>
        <translation>Kennzeichnet Sonata Meridian</translation>
    </message>
    <message>
        <source>Indicate Vivo Meridian</source>
        <translation>Kennzeichnet Vivo Meridian</translation>
    </message>
    <message>
        <source>Don&apos;t load M4 firmware on startup</source>
        <translation>M4-Firmware beim Start nicht laden</translation>
    </message>
    <message>
        <source>Don&apos;t start and stop bluetooth daemon</source>
        <translation>Bluetooth-Dienst nicht starten und beenden</translation>
    </message>
    <message>
        <source>Do not modify network configuration at runtime</source>
        <translation>Netzwerkeinstellungen im Betrieb nicht ändern</translation>
    </message>
    <message>
        <source>Enable ethernet debug mode</source>
        <translation>Debug-Modus für Ethernet einschalten</translation>
    </message>
    <message>
        <source>Start machine in Tessel mode.</source>
        <translation>Maschine im Tessel-Modus starten</translation>
    </message>
    <message>
        <source>Enable feature conditioned to ZEL_CUSTOM_1_MANAGEMENT variable</source>
        <translation>Funktion einschalten, die von der Variablen ZEL_CUSTOM_1_MANAGEMENT abhängt</translation>
    </message>
    <message>
        <source>Connect to DateTimeSimulator using given simulation interface address</source>
        <translation>Mit dem DateTimeSimulator unter dieser Adresse der Simulationsschnittstelle verbinden</translation>
    </message>
    <message>
        <source>Ignore data recived from ICB but apply the time component</source>
        <translation>Daten vom ICB bis auf die Uhrzeit ignorieren</translation>
    </message>
    <message>
        <source>Piston Position Visible for ESFB with all canister.</source>
        <translation>Kolbenposition für ESFB mit allen Behältern sichtbar</translation>
    </message>
    <message>
        <source>Set a different port for EVADTS communication</source>
        <translation>Anderer Anschluss für die EVADTS-Kommunikation</translation>
    </message>
    <message>
        <source>Force Corvid device ID</source>
        <translation>Gerätekennung für Corvid vorgeben</translation>
    </message>
    <message>
        <source>Inhibit Corvid transaction manager</source>
        <translation>Transaktionsverwaltung von Corvid sperren</translation>
    </message>
    <message>
        <source>Indicate LyraCore For Windows</source>
        <translation>Kennzeichnet LyraCore für Windows</translation>
    </message>
    <message>
        <source>Set startup menu for Cap Keys gui package</source>
        <translation>Startmenü für das Oberflächenpaket Cap Keys</translation>
    </message>
    <message>
        <source>Simulate capacitive keys keyboard</source>
        <translation>Tastatur mit kapazitiven Tasten simulieren</translation>
    </message>
    <message>
        <source>Simulate capacitive keys leds</source>
        <translation>LEDs der kapazitiven Tasten simulieren</translation>
    </message>
</context>
<context>
    <name>SwitchesPage</name>
    <message>
        <source>Switches</source>
        <translation>Schalter</translation>
    </message>
    <message>
        <source>The switch is not in the list any more.</source>
        <translation>Der Schalter ist nicht mehr in der Liste.</translation>
    </message>
    <message>
        <source>Changed</source>
        <translation>Geändert</translation>
    </message>
    <message>
        <source>You can look at all switches. A technician can change them.</source>
        <translation>Sie können alle Schalter ansehen. Ein Techniker kann sie ändern.</translation>
    </message>
    <message>
        <source>Save again</source>
        <translation>Erneut speichern</translation>
    </message>
    <message>
        <source>Saved</source>
        <translation>Gespeichert</translation>
    </message>
    <message>
        <source>No switches</source>
        <translation>Keine Schalter</translation>
    </message>
    <message>
        <source>No switch matches the filters above.</source>
        <translation>Kein Schalter passt zu den Filtern oben.</translation>
    </message>
</context>
<context>
    <name>ThreadRow</name>
    <message>
        <source>Thread %1</source>
        <translation>Thread %1</translation>
    </message>
    <message>
        <source>Watched item</source>
        <translation>Überwachtes Objekt</translation>
    </message>
    <message>
        <source>%1 since the last tick</source>
        <translation>%1 seit dem letzten Lebenszeichen</translation>
    </message>
    <message>
        <source>The calls of a thread are known once it has stalled.</source>
        <translation>Die Aufrufe eines Threads sind bekannt, sobald er hängt.</translation>
    </message>
</context>
<context>
    <name>ThreadsPage</name>
    <message>
        <source>Threads</source>
        <translation>Threads</translation>
    </message>
    <message>
        <source>A thread has stalled</source>
        <translation>Ein Thread hängt</translation>
    </message>
    <message>
        <source>A thread is late</source>
        <translation>Ein Thread ist verspätet</translation>
    </message>
    <message>
        <source>All threads work</source>
        <translation>Alle Threads arbeiten</translation>
    </message>
    <message>
        <source>Recovered since the start: %1</source>
        <translation>Seit dem Start erholt: %1</translation>
    </message>
    <message>
        <source>No thread has registered</source>
        <translation>Kein Thread hat sich angemeldet</translation>
    </message>
    <message>
        <source>Threads are not watched</source>
        <translation>Threads werden nicht überwacht</translation>
    </message>
    <message>
        <source>The application registers its threads with the library&apos;s Monitor, or starts them as MonitoredQThread.</source>
        <translation>Die Anwendung meldet ihre Threads beim Monitor der Bibliothek an oder startet sie als MonitoredQThread.</translation>
    </message>
    <message>
        <source>This build of the library watches no threads. The CMake option ZELTOOLS_MONITORING builds one that does.</source>
        <translation>Dieser Build der Bibliothek überwacht keine Threads. Die CMake-Option ZELTOOLS_MONITORING baut einen, der es tut.</translation>
    </message>
</context>
<context>
    <name>TimePage</name>
    <message>
        <source>Date and time</source>
        <translation>Datum und Uhrzeit</translation>
    </message>
    <message>
        <source>Clock</source>
        <translation>Uhr</translation>
    </message>
    <message>
        <source>Time zone</source>
        <translation>Zeitzone</translation>
    </message>
    <message>
        <source>Network time</source>
        <translation>Netzwerkzeit</translation>
    </message>
</context>
<context>
    <name>UsageBar</name>
    <message>
        <source>%1: %2 free</source>
        <translation>%1: %2 frei</translation>
    </message>
</context>
<context>
    <name>ZoneChoice</name>
    <message>
        <source>The time zone is now %1.</source>
        <translation>Die Zeitzone ist jetzt %1.</translation>
    </message>
    <message>
        <source>No such time zone</source>
        <translation>Keine solche Zeitzone</translation>
    </message>
    <message>
        <source>Choose an area</source>
        <translation>Wählen Sie ein Gebiet</translation>
    </message>
    <message>
        <source>This machine has no time zones</source>
        <translation>Diese Maschine hat keine Zeitzonen</translation>
    </message>
    <message>
        <source>Add the package tzdata to its image: apt install tzdata.</source>
        <translation>Fügen Sie ihrem Image das Paket tzdata hinzu: apt install tzdata.</translation>
    </message>
</context>
<context>
    <name>formats</name>
    <message>
        <source>%1 B</source>
        <translation>%1 B</translation>
    </message>
    <message>
        <source>%1 kB</source>
        <translation>%1 kB</translation>
    </message>
    <message>
        <source>%1 MB</source>
        <translation>%1 MB</translation>
    </message>
    <message>
        <source>%1 GB</source>
        <translation>%1 GB</translation>
    </message>
</context>
<context>
    <name>zeltools::quick::Access</name>
    <message>
        <source>Only an operator may change this.</source>
        <translation>Nur ein Bediener darf das ändern.</translation>
    </message>
    <message>
        <source>Only a technician may change this.</source>
        <translation>Nur ein Techniker darf das ändern.</translation>
    </message>
    <message>
        <source>This program has no folders for log files.</source>
        <translation>Dieses Programm hat keine Ordner für Protokolldateien.</translation>
    </message>
</context>
<context>
    <name>zeltools::quick::BundleTask</name>
    <message>
        <source>The library on this machine was built without support bundles.</source>
        <translation>Die Bibliothek auf dieser Maschine wurde ohne Supportpakete gebaut.</translation>
    </message>
    <message>
        <source>The application does not tell where its files are.</source>
        <translation>Die Anwendung gibt nicht an, wo ihre Dateien liegen.</translation>
    </message>
    <message>
        <source>The folder %1 does not exist.</source>
        <translation>Den Ordner %1 gibt es nicht.</translation>
    </message>
    <message>
        <source>A file cannot have the name %1.</source>
        <translation>Eine Datei kann nicht %1 heißen.</translation>
    </message>
</context>
<context>
    <name>zeltools::quick::Clock</name>
    <message>
        <source>This is not a date and time.</source>
        <translation>Das ist kein Datum mit Uhrzeit.</translation>
    </message>
    <message>
        <source>The clock could not be set.</source>
        <translation>Die Uhr konnte nicht gestellt werden.</translation>
    </message>
    <message>
        <source>The time zone could not be switched.</source>
        <translation>Die Zeitzone konnte nicht gewechselt werden.</translation>
    </message>
</context>
<context>
    <name>zeltools::quick::CrashReportsModel</name>
    <message>
        <source>The file is no longer there.</source>
        <translation>Die Datei ist nicht mehr da.</translation>
    </message>
    <message>
        <source>The report cannot be deleted: %1</source>
        <translation>Der Bericht kann nicht gelöscht werden: %1</translation>
    </message>
    <message>
        <source>The report does not tell the reason.</source>
        <translation>Der Bericht nennt keinen Grund.</translation>
    </message>
    <message>
        <source>The file is damaged: %1</source>
        <translation>Die Datei ist beschädigt: %1</translation>
    </message>
</context>
<context>
    <name>zeltools::quick::EventHistoryModel</name>
    <message>
        <source>This program has no folders for log files.</source>
        <translation>Dieses Programm hat keine Ordner für Protokolldateien.</translation>
    </message>
    <message>
        <source>“%1” is not a date. Write the day, month and year as 31/12/2026.</source>
        <translation>„%1“ ist kein Datum. Schreiben Sie Tag, Monat und Jahr wie 31/12/2026.</translation>
    </message>
</context>
<context>
    <name>zeltools::quick::FilesAccess</name>
    <message>
        <source>This file is not accessible here.</source>
        <translation>Diese Datei ist hier nicht zugänglich.</translation>
    </message>
    <message>
        <source>This is not a file.</source>
        <translation>Das ist keine Datei.</translation>
    </message>
</context>
<context>
    <name>zeltools::quick::Library</name>
    <message>
        <source>%1 ms</source>
        <translation>%1 ms</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 s</translation>
    </message>
    <message>
        <source>%1 min</source>
        <translation>%1 min</translation>
    </message>
    <message>
        <source>%1 min %2 s</source>
        <translation>%1 min %2 s</translation>
    </message>
    <message>
        <source>%1 h %2 min</source>
        <translation>%1 h %2 min</translation>
    </message>
    <message>
        <source>%1 d %2 h</source>
        <translation>%1 T %2 h</translation>
    </message>
</context>
<context>
    <name>zeltools::quick::LogModulesModel</name>
    <message>
        <source>This module does not exist.</source>
        <translation>Dieses Modul gibt es nicht.</translation>
    </message>
</context>
<context>
    <name>zeltools::quick::MachineGraph</name>
    <message>
        <source>after %1</source>
        <translation>nach %1</translation>
    </message>
    <message>
        <source>[guard]</source>
        <translation>[Bedingung]</translation>
    </message>
</context>
<context>
    <name>zeltools::quick::MachineView</name>
    <message numerus="yes">
        <source>The machine has %n state(s) and is too large for a picture.</source>
        <translation>
            <numerusform>Die Zustandsmaschine hat %n Zustand und ist zu groß für ein Bild.</numerusform>
            <numerusform>Die Zustandsmaschine hat %n Zustände und ist zu groß für ein Bild.</numerusform>
        </translation>
    </message>
    <message>
        <source>This machine is not described as data, so that there is no picture of it.</source>
        <translation>Diese Zustandsmaschine ist nicht als Daten beschrieben, deshalb gibt es kein Bild von ihr.</translation>
    </message>
</context>
<context>
    <name>zeltools::quick::ServicesModel</name>
    <message>
        <source>There is no such service.</source>
        <translation>Diesen Dienst gibt es nicht.</translation>
    </message>
    <message>
        <source>The service could not be switched.</source>
        <translation>Der Dienst konnte nicht umgeschaltet werden.</translation>
    </message>
</context>
<context>
    <name>zeltools::quick::SwitchEditor</name>
    <message>
        <source>This switch is no longer there.</source>
        <translation>Diesen Schalter gibt es nicht mehr.</translation>
    </message>
    <message>
        <source>The environment file cannot hold a line break, nor a blank at an end.</source>
        <translation>Die Umgebungsdatei kann weder einen Zeilenumbruch noch Leerzeichen am Anfang oder Ende aufnehmen.</translation>
    </message>
    <message>
        <source>There is no environment file; changes last until the program ends.</source>
        <translation>Es gibt keine Umgebungsdatei; Änderungen gelten bis zum Programmende.</translation>
    </message>
    <message>
        <source>The environment file is unchanged, and changes last until the program ends: %1</source>
        <translation>Die Umgebungsdatei ist unverändert, und Änderungen gelten bis zum Programmende: %1</translation>
    </message>
    <message>
        <source>the file was refused</source>
        <translation>die Datei wurde abgelehnt</translation>
    </message>
</context>
<context>
    <name>zeltools::quick::SwitchTexts</name>
    <message>
        <source>Text</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>Number</source>
        <translation>Zahl</translation>
    </message>
    <message>
        <source>On or off</source>
        <translation>Ein oder aus</translation>
    </message>
    <message>
        <source>General</source>
        <translation>Allgemein</translation>
    </message>
    <message>
        <source>Test</source>
        <translation>Test</translation>
    </message>
    <message>
        <source>CAN bus</source>
        <translation>CAN-Bus</translation>
    </message>
    <message>
        <source>Payment</source>
        <translation>Zahlung</translation>
    </message>
    <message>
        <source>Watchdog</source>
        <translation>Watchdog</translation>
    </message>
    <message>
        <source>Display</source>
        <translation>Anzeige</translation>
    </message>
    <message>
        <source>Cup sensor</source>
        <translation>Tassensensor</translation>
    </message>
    <message>
        <source>I2C</source>
        <translation>I2C</translation>
    </message>
    <message>
        <source>ERS protocol</source>
        <translation>ERS-Protokoll</translation>
    </message>
    <message>
        <source>Remote server</source>
        <translation>Entfernter Server</translation>
    </message>
    <message>
        <source>Touchless</source>
        <translation>Berührungslos</translation>
    </message>
    <message>
        <source>Vesta One</source>
        <translation>Vesta One</translation>
    </message>
    <message>
        <source>Android</source>
        <translation>Android</translation>
    </message>
    <message>
        <source>Miscellaneous</source>
        <translation>Verschiedenes</translation>
    </message>
    <message>
        <source>Power board</source>
        <translation>Leistungsplatine</translation>
    </message>
    <message>
        <source>Bluetooth</source>
        <translation>Bluetooth</translation>
    </message>
    <message>
        <source>Network</source>
        <translation>Netzwerk</translation>
    </message>
    <message>
        <source>Date and time</source>
        <translation>Datum und Uhrzeit</translation>
    </message>
    <message>
        <source>Piston</source>
        <translation>Kolben</translation>
    </message>
    <message>
        <source>Capacitive keys</source>
        <translation>Kapazitive Tasten</translation>
    </message>
    <message>
        <source>SocketCAN</source>
        <translation>SocketCAN</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a whole number from %2 to %3.</source>
        <translation>„%1“ ist keine ganze Zahl von %2 bis %3.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is neither 1 (on) nor 0 (off).</source>
        <translation>„%1“ ist weder 1 (ein) noch 0 (aus).</translation>
    </message>
    <message>
        <source>The switch does not take &quot;%1&quot;.</source>
        <translation>Der Schalter nimmt „%1“ nicht an.</translation>
    </message>
    <message>
        <source>All</source>
        <translation>Alle</translation>
    </message>
</context>
<context>
    <name>zeltools::quick::ThreadsModel</name>
    <message>
        <source>on time</source>
        <translation>pünktlich</translation>
    </message>
    <message>
        <source>late</source>
        <translation>verspätet</translation>
    </message>
    <message>
        <source>stalled</source>
        <translation>hängt</translation>
    </message>
    <message>
        <source>paused</source>
        <translation>angehalten</translation>
    </message>
</context>
</TS>
