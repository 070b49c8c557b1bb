<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>QCommandLineParser</name>
    <message>
        <source>Unknown option &apos;%1&apos;.</source>
        <translation>Unbekannte Option „%1“.</translation>
    </message>
    <message>
        <source>Unknown options: %1.</source>
        <translation>Unbekannte Optionen: %1.</translation>
    </message>
    <message>
        <source>Missing value after &apos;%1&apos;.</source>
        <translation>Nach „%1“ fehlt ein Wert.</translation>
    </message>
    <message>
        <source>Unexpected value after &apos;%1&apos;.</source>
        <translation>Unerwarteter Wert nach „%1“.</translation>
    </message>
</context>
<context>
    <name>zelctl</name>
    <message>
        <source>addr2line of binutils is missing, so calls have no names</source>
        <translation>addr2line aus binutils fehlt, daher haben die Aufrufe keine Namen</translation>
    </message>
    <message>
        <source>addr2line takes too long for %1</source>
        <translation>addr2line braucht zu lange für %1</translation>
    </message>
    <message>
        <source>addr2line cannot read %1</source>
        <translation>addr2line kann %1 nicht lesen</translation>
    </message>
    <message>
        <source>addr2line does not give the names in %1 one by one</source>
        <translation>addr2line gibt die Namen in %1 nicht einzeln aus</translation>
    </message>
    <message>
        <source>--level is a number above 0</source>
        <translation>--level ist eine Zahl über 0</translation>
    </message>
    <message>
        <source>Packs the logs of a machine and a description of the running system into one file, and reads such a file without unpacking it.

OUT appears when it is complete. What cannot be read is named on stderr and in the manifest. For a name that ends in .crypt, the key comes from --key-file or from the environment variable ZEL_KEY; the cipher only protects against casual reading.</source>
        <translation>Packt die Protokolle einer Maschine und eine Beschreibung des laufenden Systems in eine Datei und liest eine solche Datei, ohne sie zu entpacken.

OUT erscheint, sobald es vollständig ist. Was nicht gelesen werden kann, wird auf stderr und im Manifest genannt. Für einen Namen, der auf .crypt endet, kommt der Schlüssel aus --key-file oder aus der Umgebungsvariablen ZEL_KEY; das Verfahren schützt nur vor beiläufigem Lesen.</translation>
    </message>
    <message>
        <source>Packs the log files.</source>
        <translation>Packt die Protokolldateien.</translation>
    </message>
    <message>
        <source>Checks that all files are there and undamaged.</source>
        <translation>Prüft, ob alle Dateien vorhanden und unbeschädigt sind.</translation>
    </message>
    <message>
        <source>Shows which files there are.</source>
        <translation>Zeigt, welche Dateien enthalten sind.</translation>
    </message>
    <message>
        <source>The folder &quot;logs&quot;, the one above it, or a folder with log files</source>
        <translation>Der Ordner „logs“, der Ordner darüber oder ein Ordner mit Protokolldateien</translation>
    </message>
    <message>
        <source>The new file; its name ends in .tar.zst or .tar.gz, or with .crypt behind that</source>
        <translation>Die neue Datei; ihr Name endet auf .tar.zst oder .tar.gz, oder dahinter noch auf .crypt</translation>
    </message>
    <message>
        <source>Reads the key, 16 hexadecimal digits, from FILE.</source>
        <translation>Liest den Schlüssel, 16 hexadezimale Ziffern, aus FILE.</translation>
    </message>
    <message>
        <source>Adds this environment file, with the values of secrets masked.</source>
        <translation>Fügt diese Umgebungsdatei hinzu, wobei die Werte von Geheimnissen unkenntlich sind.</translation>
    </message>
    <message>
        <source>Compression: 1 to 19 for .tar.zst (3), 1 to 9 for .tar.gz (6).</source>
        <translation>Kompression: 1 bis 19 für .tar.zst (3), 1 bis 9 für .tar.gz (6).</translation>
    </message>
    <message>
        <source>list: prints the manifest. verify: prints one JSON object.</source>
        <translation>list: gibt das Manifest aus. verify: gibt ein JSON-Objekt aus.</translation>
    </message>
    <message>
        <source>The bundle is complete, though what could not be read may be missing; or the file that was read is a complete bundle.</source>
        <translation>Das Paket ist vollständig, auch wenn darin fehlen kann, was nicht lesbar war; oder die gelesene Datei ist ein vollständiges Paket.</translation>
    </message>
    <message>
        <source>There is no bundle, it is damaged, or the key is missing or wrong.</source>
        <translation>Es gibt kein Paket, es ist beschädigt, oder der Schlüssel fehlt oder ist falsch.</translation>
    </message>
    <message>
        <source>The key, 16 hexadecimal digits, without --key-file.</source>
        <translation>Der Schlüssel, 16 hexadezimale Ziffern, ohne --key-file.</translation>
    </message>
    <message>
        <source>Packs all logs of a machine.</source>
        <translation>Packt alle Protokolle einer Maschine.</translation>
    </message>
    <message>
        <source>Prints the manifest as JSON.</source>
        <translation>Gibt das Manifest als JSON aus.</translation>
    </message>
    <message>
        <source>this zelctl was built without libarchive, which bundles need</source>
        <translation>dieses zelctl wurde ohne libarchive gebaut, das Pakete brauchen</translation>
    </message>
    <message>
        <source>not in the bundle: %1: %2</source>
        <translation>nicht im Paket: %1: %2</translation>
    </message>
    <message>
        <source>losses.json is incomplete: %1</source>
        <translation>losses.json ist unvollständig: %1</translation>
    </message>
    <message>
        <source>%1 ends with %2 bytes of zeros: %3</source>
        <translation>%1 endet mit %2 Nullbytes: %3</translation>
    </message>
    <message>
        <source>%1 holds no log files</source>
        <translation>%1 enthält keine Protokolldateien</translation>
    </message>
    <message>
        <source>writing %1 would lose the key or the environment file</source>
        <translation>beim Schreiben von %1 ginge der Schlüssel oder die Umgebungsdatei verloren</translation>
    </message>
    <message>
        <source>reading</source>
        <translation>lese</translation>
    </message>
    <message>
        <source>packing</source>
        <translation>packe</translation>
    </message>
    <message>
        <source>1 file in %1</source>
        <translation>1 Datei in %1</translation>
    </message>
    <message numerus="yes">
        <source>%n files in %1</source>
        <translation>
            <numerusform>%n Datei in %1</numerusform>
            <numerusform>%n Dateien in %1</numerusform>
        </translation>
    </message>
    <message>
        <source>checking</source>
        <translation>prüfe</translation>
    </message>
    <message>
        <source>complete: 1 file of %1</source>
        <translation>vollständig: 1 Datei vom %1</translation>
    </message>
    <message numerus="yes">
        <source>complete: %n files of %1</source>
        <translation>
            <numerusform>vollständig: %n Datei vom %1</numerusform>
            <numerusform>vollständig: %n Dateien vom %1</numerusform>
        </translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a date and time of the form %2</source>
        <translation>„%1“ ist kein Datum mit Uhrzeit der Form %2</translation>
    </message>
    <message>
        <source>there is no time zone &quot;%1&quot;</source>
        <translation>es gibt keine Zeitzone „%1“</translation>
    </message>
    <message>
        <source>this computer&apos;s time zone skips %1; --zone names that of the machine</source>
        <translation>die Zeitzone dieses Rechners überspringt %1; --zone nennt die der Maschine</translation>
    </message>
    <message>
        <source>%1 skips %2</source>
        <translation>%1 überspringt %2</translation>
    </message>
    <message>
        <source>--zone is only valid with --set</source>
        <translation>--zone gehört zu --set</translation>
    </message>
    <message>
        <source>--timeout needs a number of seconds from 1 to 86400</source>
        <translation>--timeout braucht eine Anzahl von Sekunden von 1 bis 86400</translation>
    </message>
    <message>
        <source>The simulator&apos;s end of a simulated clock: sets the clock of a machine, or prints the dates and times, in UTC, that the machine asks for, the first one or all.

A server waits for the machine to connect, a client connects to it; the machine has the other one of the two.</source>
        <translation>Das Simulator-Ende einer simulierten Uhr: stellt die Uhr einer Maschine oder gibt die Zeiten mit Datum, in UTC, aus, nach denen die Maschine fragt, die erste oder alle.

Ein Server wartet, bis sich die Maschine verbindet, ein Client verbindet sich mit ihr; die Maschine hat jeweils das andere von beiden.</translation>
    </message>
    <message>
        <source>tcpserver/IP/PORT, tcpclient/IP/PORT, unixserver/PATH or unixclient/PATH</source>
        <translation>tcpserver/IP/PORT, tcpclient/IP/PORT, unixserver/PATH oder unixclient/PATH</translation>
    </message>
    <message>
        <source>yyyy/MM/dd hh:mm:ss in the machine&apos;s zone</source>
        <translation>yyyy/MM/dd hh:mm:ss in der Zeitzone der Maschine</translation>
    </message>
    <message>
        <source>Sets the clock to TIME. It is done when the time has been sent and the machine has not closed the link within a second; it does not confirm it.</source>
        <translation>Stellt die Uhr auf TIME. Das ist geschehen, wenn die Zeit gesendet ist und die Maschine die Verbindung nicht innerhalb einer Sekunde geschlossen hat; die Maschine bestätigt es nicht.</translation>
    </message>
    <message>
        <source>The machine&apos;s zone, such as Europe/Rome, where it is not this computer&apos;s. A time that the zone skips is refused, since it would make the machine&apos;s clock invalid.</source>
        <translation>Die Zeitzone der Maschine, etwa Europe/Rome, wenn sie nicht die dieses Rechners ist. Eine Zeit, die in der Zeitzone übersprungen wird, wird abgelehnt, da sie die Uhr der Maschine ungültig machte.</translation>
    </message>
    <message>
        <source>Prints all that the machine asks for, until interrupted. A clock that was set runs on: a machine that connects again gets the time that it then shows.</source>
        <translation>Gibt bis zum Abbruch alles aus, wonach die Maschine fragt. Eine gestellte Uhr läuft weiter: Eine Maschine, die sich erneut verbindet, bekommt die Zeit, die sie dann zeigt.</translation>
    </message>
    <message>
        <source>Prints one JSON object for each time that was asked for, or set.</source>
        <translation>Gibt ein JSON-Objekt für jede Zeit aus, nach der gefragt oder die gestellt wurde.</translation>
    </message>
    <message>
        <source>Gives up after SECONDS, without --follow; 10 unless given.</source>
        <translation>Gibt ohne --follow nach SECONDS auf; ohne Angabe nach 10.</translation>
    </message>
    <message>
        <source>The time was sent, or printed.</source>
        <translation>Die Zeit wurde gesendet oder ausgegeben.</translation>
    </message>
    <message>
        <source>The machine did not connect, did not ask in time, or closed the link; or the command was interrupted without --follow.</source>
        <translation>Die Maschine hat sich nicht verbunden, nicht rechtzeitig gefragt oder die Verbindung geschlossen, oder der Befehl wurde ohne --follow abgebrochen.</translation>
    </message>
    <message>
        <source>Sets the clock of the machine that listens on port 8133.</source>
        <translation>Stellt die Uhr der Maschine, die auf Port 8133 lauscht.</translation>
    </message>
    <message>
        <source>no machine has asked for a time in %1 s</source>
        <translation>keine Maschine hat in %1 s nach einer Zeit gefragt</translation>
    </message>
    <message>
        <source>no machine has connected in %1 s</source>
        <translation>keine Maschine hat sich in %1 s verbunden</translation>
    </message>
    <message>
        <source>the machine has closed the link, it may have another simulator</source>
        <translation>die Maschine hat die Verbindung geschlossen, vielleicht hat sie einen anderen Simulator</translation>
    </message>
    <message>
        <source>the machine has closed the link</source>
        <translation>die Maschine hat die Verbindung geschlossen</translation>
    </message>
    <message>
        <source>%1; waiting for it</source>
        <translation>%1; es wird auf sie gewartet</translation>
    </message>
    <message>
        <source>cannot write the output: %1</source>
        <translation>die Ausgabe kann nicht geschrieben werden: %1</translation>
    </message>
    <message>
        <source>Examples</source>
        <translation>Beispiele</translation>
    </message>
    <message>
        <source>Usage: zelctl COMMAND [options]</source>
        <translation>Aufruf: zelctl COMMAND [options]</translation>
    </message>
    <message>
        <source>Commands</source>
        <translation>Befehle</translation>
    </message>
    <message>
        <source>&quot;zelctl help COMMAND&quot; explains a command, and &quot;zelctl --version&quot; prints the version.</source>
        <translation>„zelctl help COMMAND“ erklärt einen Befehl, „zelctl --version“ nennt die Version.</translation>
    </message>
    <message>
        <source>Usage: %1</source>
        <translation>Aufruf: %1</translation>
    </message>
    <message>
        <source>Actions</source>
        <translation>Aktionen</translation>
    </message>
    <message>
        <source>Options</source>
        <translation>Optionen</translation>
    </message>
    <message>
        <source>Values</source>
        <translation>Werte</translation>
    </message>
    <message>
        <source>Environment</source>
        <translation>Umgebung</translation>
    </message>
    <message>
        <source>Files</source>
        <translation>Dateien</translation>
    </message>
    <message>
        <source>Exit status</source>
        <translation>Rückgabewert</translation>
    </message>
    <message>
        <source>All is done.</source>
        <translation>Alles ist erledigt.</translation>
    </message>
    <message>
        <source>It failed; one line on stderr gives the reason.</source>
        <translation>Es ist fehlgeschlagen; eine Zeile auf stderr nennt den Grund.</translation>
    </message>
    <message>
        <source>The command line is wrong. Nothing has been done.</source>
        <translation>Die Befehlszeile ist falsch. Es wurde nichts getan.</translation>
    </message>
    <message>
        <source>Shows this help.</source>
        <translation>Zeigt diese Hilfe.</translation>
    </message>
    <message>
        <source>the arguments are not UTF-8</source>
        <translation>die Argumente sind nicht UTF-8</translation>
    </message>
    <message>
        <source>%1; see &quot;%2 --help&quot;</source>
        <translation>%1; siehe „%2 --help“</translation>
    </message>
    <message>
        <source>--%1 is given more than once</source>
        <translation>--%1 ist mehrfach angegeben</translation>
    </message>
    <message>
        <source>Packs the logs of a machine into one file for support, checks such files.</source>
        <translation>Packt die Protokolle einer Maschine für den Support in eine Datei, prüft solche Dateien.</translation>
    </message>
    <message>
        <source>Drives the simulated clock of a machine.</source>
        <translation>Steuert die simulierte Uhr einer Maschine.</translation>
    </message>
    <message>
        <source>Prints the script by which a shell completes zelctl.</source>
        <translation>Gibt das Skript aus, mit dem eine Shell zelctl vervollständigt.</translation>
    </message>
    <message>
        <source>Lists and shows the crash reports of a machine.</source>
        <translation>Listet und zeigt die Absturzberichte einer Maschine.</translation>
    </message>
    <message>
        <source>Encrypts and decrypts files, shows what their header says.</source>
        <translation>Verschlüsselt und entschlüsselt Dateien, zeigt den Inhalt ihres Kopfes.</translation>
    </message>
    <message>
        <source>Shows and edits the environment file of a machine.</source>
        <translation>Zeigt und bearbeitet die Umgebungsdatei einer Maschine.</translation>
    </message>
    <message>
        <source>Shows the event history of a machine in pages.</source>
        <translation>Zeigt die Ereignisse einer Maschine seitenweise.</translation>
    </message>
    <message>
        <source>Explains a command.</source>
        <translation>Erklärt einen Befehl.</translation>
    </message>
    <message>
        <source>Normalizes hexadecimal text, or converts it into bytes and back.</source>
        <translation>Bringt hexadezimalen Text in eine Form oder in Bytes und zurück.</translation>
    </message>
    <message>
        <source>Prints the log of the running kernel, and follows it.</source>
        <translation>Gibt das Protokoll des laufenden Kernels aus und folgt ihm.</translation>
    </message>
    <message>
        <source>Prints the log files of a machine, merged by time, and searches them.</source>
        <translation>Gibt die Protokolldateien einer Maschine nach Zeit gemischt aus und durchsucht sie.</translation>
    </message>
    <message>
        <source>Writes the log lines that killed processes have left.</source>
        <translation>Schreibt die Protokollzeilen, die abgebrochene Prozesse hinterlassen haben.</translation>
    </message>
    <message>
        <source>Plays the simulator of a machine from a script, records and replays links.</source>
        <translation>Spielt den Simulator einer Maschine nach einem Skript, zeichnet Verbindungen auf und spielt sie ab.</translation>
    </message>
    <message>
        <source>Compares two versions, or prints that of the library.</source>
        <translation>Vergleicht zwei Versionen, nennt die der Bibliothek.</translation>
    </message>
    <message>
        <source>%1 is empty</source>
        <translation>%1 ist leer</translation>
    </message>
    <message>
        <source>%1 is missing in &quot;%2&quot;</source>
        <translation>%1 fehlt in „%2“</translation>
    </message>
    <message>
        <source>unexpected argument &quot;%1&quot;; usage: %2</source>
        <translation>überzähliges Argument „%1“; Aufruf: %2</translation>
    </message>
    <message>
        <source>unknown action &quot;%1&quot;; the actions are: %2</source>
        <translation>unbekannte Aktion „%1“; die Formen sind: %2</translation>
    </message>
    <message>
        <source>an action is missing; the actions are: %1</source>
        <translation>eine Aktion fehlt; die Formen sind: %1</translation>
    </message>
    <message>
        <source>Prints a script by which a shell completes command lines of zelctl: commands, actions, options, the names of switches, kinds of events, modules, levels, files and folders. The package installs these scripts; elsewhere they can be read by the files that a shell reads at its start.</source>
        <translation>Gibt ein Skript aus, mit dem eine Shell Befehlszeilen von zelctl vervollständigt: Befehle, Aktionen, Optionen, Namen von Schaltern, Arten von Ereignissen, Module, Stufen, Dateien und Ordner. Das Paket installiert diese Skripte; sonst können die Dateien sie einlesen, die eine Shell beim Start liest.</translation>
    </message>
    <message>
        <source>The script for bash 4.4 or later; it does not need bash-completion.</source>
        <translation>Das Skript für bash ab 4.4; es braucht bash-completion nicht.</translation>
    </message>
    <message>
        <source>The script for zsh, after compinit, or for a folder in fpath by the name _zelctl.</source>
        <translation>Das Skript für zsh, nach compinit, oder unter dem Namen _zelctl für einen Ordner in fpath.</translation>
    </message>
    <message>
        <source>The script for fish 3.2 or later.</source>
        <translation>Das Skript für fish ab 3.2.</translation>
    </message>
    <message>
        <source>The script was printed.</source>
        <translation>Das Skript wurde ausgegeben.</translation>
    </message>
    <message>
        <source>The script could not be written.</source>
        <translation>Das Skript konnte nicht geschrieben werden.</translation>
    </message>
    <message>
        <source>Completes in this bash, and from ~/.bashrc in all.</source>
        <translation>Vervollständigt in dieser bash, und aus ~/.bashrc in allen.</translation>
    </message>
    <message>
        <source>Completes in each fish.</source>
        <translation>Vervollständigt in jeder fish.</translation>
    </message>
    <message>
        <source>%1 is a folder; &quot;zelctl crash list&quot; names the reports in it</source>
        <translation>%1 ist ein Ordner; „zelctl crash list“ nennt die Berichte darin</translation>
    </message>
    <message>
        <source>Shows the crash reports of a machine.

The names of functions come from files with the same build id as the program or library that crashed: without --symbols from /usr/lib/debug/.build-id and from the programs and libraries of this machine. addr2line of binutils reads them.</source>
        <translation>Zeigt die Absturzberichte einer Maschine.

Die Namen von Funktionen kommen aus Dateien mit derselben Build-ID wie das abgestürzte Programm oder die Bibliothek: ohne --symbols aus /usr/lib/debug/.build-id und aus den Programmen und Bibliotheken dieses Rechners. addr2line aus binutils liest sie.</translation>
    </message>
    <message>
        <source>One line for each report in the folder: time, signal, whether the report is complete, program, file, reason; the newest first.</source>
        <translation>Eine Zeile für jeden Bericht im Ordner: Zeit, Signal, ob der Bericht vollständig ist, Programm, Datei, Grund; der neueste zuerst.</translation>
    </message>
    <message>
        <source>One report with all call stacks, the threads of the monitor, the last log lines, registers and modules.</source>
        <translation>Ein Bericht mit allen Aufrufstapeln, den überwachten Threads, den letzten Protokollzeilen, Registern und Modulen.</translation>
    </message>
    <message>
        <source>The folder of the reports, or of the symbols</source>
        <translation>Der Ordner der Berichte oder der Symbole</translation>
    </message>
    <message>
        <source>The report</source>
        <translation>Der Bericht</translation>
    </message>
    <message>
        <source>show: takes the symbols from the files in this folder and below.</source>
        <translation>show: nimmt die Symbole aus den Dateien in diesem Ordner und darunter.</translation>
    </message>
    <message>
        <source>list: does not fit the lines into the terminal.</source>
        <translation>list: passt die Zeilen nicht an das Terminal an.</translation>
    </message>
    <message>
        <source>Prints one JSON object.</source>
        <translation>Gibt ein JSON-Objekt aus.</translation>
    </message>
    <message>
        <source>All was shown.</source>
        <translation>Alles wurde gezeigt.</translation>
    </message>
    <message>
        <source>A folder or report cannot be read, a file in the folder is not a report, or addr2line failed; the rest was shown.</source>
        <translation>Ein Ordner oder Bericht ist nicht lesbar, eine Datei im Ordner ist kein Bericht, oder addr2line ist fehlgeschlagen; der Rest wurde gezeigt.</translation>
    </message>
    <message>
        <source>Symbols of installed programs.</source>
        <translation>Symbole installierter Programme.</translation>
    </message>
    <message>
        <source>Lists the reports of a machine.</source>
        <translation>Listet die Berichte einer Maschine.</translation>
    </message>
    <message>
        <source>Shows a report with the names of that version.</source>
        <translation>Zeigt einen Bericht mit den Namen dieser Version.</translation>
    </message>
    <message>
        <source>cannot read %1: %2</source>
        <translation>%1 kann nicht gelesen werden: %2</translation>
    </message>
    <message>
        <source>it is not a crash report</source>
        <translation>es ist kein Absturzbericht</translation>
    </message>
    <message>
        <source>it is a crash report of another version</source>
        <translation>es ist ein Absturzbericht einer anderen Version</translation>
    </message>
    <message>
        <source>incomplete</source>
        <translation>lückenhaft</translation>
    </message>
    <message>
        <source>the report is cut or damaged</source>
        <translation>der Bericht ist abgeschnitten oder beschädigt</translation>
    </message>
    <message>
        <source>signal</source>
        <translation>Signal</translation>
    </message>
    <message>
        <source>reason</source>
        <translation>Grund</translation>
    </message>
    <message>
        <source>address</source>
        <translation>Adresse</translation>
    </message>
    <message>
        <source>time</source>
        <translation>Zeit</translation>
    </message>
    <message>
        <source>running for</source>
        <translation>lief</translation>
    </message>
    <message>
        <source>started</source>
        <translation>gestartet</translation>
    </message>
    <message>
        <source>program</source>
        <translation>Programm</translation>
    </message>
    <message>
        <source>%1 (process %2)</source>
        <translation>%1 (Prozess %2)</translation>
    </message>
    <message>
        <source>application</source>
        <translation>Anwendung</translation>
    </message>
    <message>
        <source>library</source>
        <translation>Bibliothek</translation>
    </message>
    <message>
        <source>boot</source>
        <translation>Boot</translation>
    </message>
    <message>
        <source>thread %1 %2, crashed</source>
        <translation>Thread %1 %2, abgestürzt</translation>
    </message>
    <message>
        <source>thread %1 %2</source>
        <translation>Thread %1 %2</translation>
    </message>
    <message>
        <source>no answer</source>
        <translation>keine Antwort</translation>
    </message>
    <message>
        <source>inlined into %1</source>
        <translation>eingebettet in %1</translation>
    </message>
    <message>
        <source>last tick %1 ms before</source>
        <translation>letztes Lebenszeichen %1 ms davor</translation>
    </message>
    <message>
        <source>monitored threads</source>
        <translation>überwachte Threads</translation>
    </message>
    <message>
        <source>last lines of the log</source>
        <translation>letzte Zeilen des Protokolls</translation>
    </message>
    <message>
        <source>registers</source>
        <translation>Register</translation>
    </message>
    <message>
        <source>modules</source>
        <translation>Module</translation>
    </message>
    <message>
        <source>--require is checksum or sha1</source>
        <translation>--require ist checksum oder sha1</translation>
    </message>
    <message>
        <source>--protection is off, checksum or sha1</source>
        <translation>--protection ist off, checksum oder sha1</translation>
    </message>
    <message>
        <source>--compression is smaller, forced or off</source>
        <translation>--compression ist smaller, forced oder off</translation>
    </message>
    <message>
        <source>--metadata takes ASCII only: anything else would be read back changed</source>
        <translation>--metadata nimmt nur ASCII: Alles andere würde verändert zurückgelesen</translation>
    </message>
    <message>
        <source>Encrypts and decrypts files, and shows what their header says.

OUT appears when it is complete. Compression, a checksum and pipes need memory for several times the size of the file; all else is streamed. The key, 16 hexadecimal digits, comes from --key-file or from the environment variable ZEL_KEY.

The flags of a file are not protected: one that has lost them is decrypted without a check, into garbage, and the program says only that nothing was checked. --require refuses such a file.</source>
        <translation>Verschlüsselt und entschlüsselt Dateien und zeigt den Inhalt ihres Kopfes.

OUT erscheint, sobald es vollständig ist. Kompression, eine Prüfsumme und Pipes brauchen Speicher für ein Mehrfaches der Dateigröße; alles andere wird als Strom verarbeitet. Der Schlüssel, 16 hexadezimale Ziffern, kommt aus --key-file oder aus der Umgebungsvariablen ZEL_KEY.

Die Flags einer Datei sind nicht geschützt: Eine Datei, die sie verloren hat, wird ohne Prüfung zu Unsinn entschlüsselt, und das Programm sagt nur, dass nichts geprüft wurde. --require lehnt eine solche Datei ab.</translation>
    </message>
    <message>
        <source>Encrypts, and checks what it wrote by decrypting it.</source>
        <translation>Verschlüsselt und prüft das Geschriebene, indem es entschlüsselt wird.</translation>
    </message>
    <message>
        <source>Decrypts.</source>
        <translation>Entschlüsselt.</translation>
    </message>
    <message>
        <source>Shows version, flags, metadata, the number of bytes in front of the payload and where the digest is; needs no key.</source>
        <translation>Zeigt Version, Flags, Metadaten, die Anzahl der Bytes vor den Nutzdaten und die Stelle des Hashwerts; braucht keinen Schlüssel.</translation>
    </message>
    <message>
        <source>A file, or &quot;-&quot; for the standard input</source>
        <translation>Eine Datei, oder „-“ für die Standardeingabe</translation>
    </message>
    <message>
        <source>A file, or &quot;-&quot; for the standard output</source>
        <translation>Eine Datei, oder „-“ für die Standardausgabe</translation>
    </message>
    <message>
        <source>Reads the key from FILE.</source>
        <translation>Liest den Schlüssel aus FILE.</translation>
    </message>
    <message>
        <source>Puts a readable ASCII text into the header.</source>
        <translation>Setzt einen lesbaren ASCII-Text in den Kopf.</translation>
    </message>
    <message>
        <source>What a decryption checks; sha1 unless given.</source>
        <translation>Was beim Entschlüsseln geprüft wird; ohne Angabe sha1.</translation>
    </message>
    <message>
        <source>smaller compresses where it pays; off unless given.</source>
        <translation>smaller komprimiert, wo es sich lohnt; ohne Angabe off.</translation>
    </message>
    <message>
        <source>Does not encipher.</source>
        <translation>Verschlüsselt nicht.</translation>
    </message>
    <message>
        <source>The same input gives the same output each time.</source>
        <translation>Dieselbe Eingabe ergibt immer dieselbe Ausgabe.</translation>
    </message>
    <message>
        <source>Does not stream.</source>
        <translation>Verarbeitet die Datei nicht als Strom.</translation>
    </message>
    <message>
        <source>Decrypts only what is checked by this.</source>
        <translation>Entschlüsselt nur, was hiermit geprüft wird.</translation>
    </message>
    <message>
        <source>Prints the info as one JSON object.</source>
        <translation>Gibt die Angaben als ein JSON-Objekt aus.</translation>
    </message>
    <message>
        <source>OUT is complete, or the header was shown.</source>
        <translation>OUT ist vollständig, oder der Kopf wurde gezeigt.</translation>
    </message>
    <message>
        <source>There is no OUT: a file cannot be read or written, is damaged, or the key is missing or wrong.</source>
        <translation>Es gibt kein OUT: Eine Datei kann nicht gelesen oder geschrieben werden oder ist beschädigt, oder der Schlüssel fehlt oder ist falsch.</translation>
    </message>
    <message>
        <source>Encrypts a file.</source>
        <translation>Verschlüsselt eine Datei.</translation>
    </message>
    <message>
        <source>Shows what it is.</source>
        <translation>Zeigt, was sie ist.</translation>
    </message>
    <message>
        <source>%1 is not a cyphertext</source>
        <translation>%1 ist kein Chiffrat</translation>
    </message>
    <message>
        <source>the header of %1 is damaged</source>
        <translation>der Kopf von %1 ist beschädigt</translation>
    </message>
    <message>
        <source>%1 bytes, too many to be shown</source>
        <translation>%1 Bytes, zu viele zum Zeigen</translation>
    </message>
    <message>
        <source>what was written does not decrypt to it</source>
        <translation>das Geschriebene lässt sich nicht dazu entschlüsseln</translation>
    </message>
    <message>
        <source>cannot encrypt %1: %2</source>
        <translation>%1 kann nicht verschlüsselt werden: %2</translation>
    </message>
    <message>
        <source>cannot decrypt %1: %2</source>
        <translation>%1 kann nicht entschlüsselt werden: %2</translation>
    </message>
    <message>
        <source>it is not a cyphertext</source>
        <translation>es ist kein Chiffrat</translation>
    </message>
    <message>
        <source>it is damaged, or the key is another one</source>
        <translation>es ist beschädigt, oder es ist ein anderer Schlüssel</translation>
    </message>
    <message>
        <source>it has become shorter meanwhile</source>
        <translation>es ist inzwischen kürzer geworden</translation>
    </message>
    <message>
        <source>cannot write %1: %2</source>
        <translation>%1 kann nicht geschrieben werden: %2</translation>
    </message>
    <message>
        <source>it has no SHA-1 to check</source>
        <translation>es hat keinen SHA-1 zum Prüfen</translation>
    </message>
    <message>
        <source>it has no checksum to check</source>
        <translation>es hat keine Prüfsumme zum Prüfen</translation>
    </message>
    <message>
        <source>cannot check %1: %2</source>
        <translation>%1 kann nicht geprüft werden: %2</translation>
    </message>
    <message>
        <source>encrypting</source>
        <translation>verschlüssele</translation>
    </message>
    <message>
        <source>decrypting</source>
        <translation>entschlüssele</translation>
    </message>
    <message>
        <source>writing %1 would lose the input or the key</source>
        <translation>beim Schreiben von %1 ginge die Eingabe oder der Schlüssel verloren</translation>
    </message>
    <message>
        <source>Cannot allocate memory</source>
        <translation>Der Speicher reicht nicht aus</translation>
    </message>
    <message>
        <source>%1 has no checksum and no SHA-1: nothing was checked</source>
        <translation>%1 hat weder Prüfsumme noch SHA-1: Es wurde nichts geprüft</translation>
    </message>
    <message>
        <source>%1 holds no key of 16 hexadecimal digits</source>
        <translation>%1 enthält keinen Schlüssel aus 16 hexadezimalen Ziffern</translation>
    </message>
    <message>
        <source>a key is missing: --key-file or the environment variable ZEL_KEY</source>
        <translation>ein Schlüssel fehlt: --key-file oder die Umgebungsvariable ZEL_KEY</translation>
    </message>
    <message>
        <source>the environment variable ZEL_KEY holds no key of 16 hexadecimal digits</source>
        <translation>die Umgebungsvariable ZEL_KEY enthält keinen Schlüssel aus 16 hexadezimalen Ziffern</translation>
    </message>
    <message>
        <source>%1 is not a switch, and not in %2</source>
        <translation>%1 ist kein Schalter und steht nicht in %2</translation>
    </message>
    <message>
        <source>%1 has no value</source>
        <translation>%1 hat keinen Wert</translation>
    </message>
    <message>
        <source>a line of the file cannot hold the name &quot;%1&quot;</source>
        <translation>eine Zeile der Datei kann den Namen „%1“ nicht aufnehmen</translation>
    </message>
    <message>
        <source>%1 is not a switch; --force sets it anyway</source>
        <translation>%1 ist kein Schalter; --force setzt ihn trotzdem</translation>
    </message>
    <message>
        <source>a line of the file cannot hold the value &quot;%1&quot; of %2</source>
        <translation>eine Zeile der Datei kann den Wert „%1“ von %2 nicht aufnehmen</translation>
    </message>
    <message>
        <source>What the machine gets, and whether from the file, from the environment (here that of zelctl) or from the build (define). A value that the machine would refuse is marked as invalid.</source>
        <translation>Was die Maschine bekommt, und ob aus der Datei, aus der Umgebung (hier der von zelctl) oder aus dem Build (define). Ein Wert, den die Maschine ablehnen würde, ist mit invalid markiert.</translation>
    </message>
    <message>
        <source>The value that the machine gets.</source>
        <translation>Der Wert, den die Maschine bekommt.</translation>
    </message>
    <message>
        <source>Changes one line of the file, or appends it; creates a missing file. After &quot;--&quot; a VALUE may begin with &quot;-&quot;.</source>
        <translation>Ändert eine Zeile der Datei oder hängt sie an; legt eine fehlende Datei an. Nach „--“ darf ein VALUE mit „-“ beginnen.</translation>
    </message>
    <message>
        <source>Removes the lines of that name.</source>
        <translation>Entfernt die Zeilen dieses Namens.</translation>
    </message>
    <message>
        <source>All switches: name, type, category, flags (1 is visible, 2 and 4 are the application&apos;s), build default, description.</source>
        <translation>Alle Schalter: Name, Typ, Kategorie, Flags (1 ist sichtbar, 2 und 4 gehören der Anwendung), Vorgabe des Builds, Beschreibung.</translation>
    </message>
    <message>
        <source>The environment file</source>
        <translation>Die Umgebungsdatei</translation>
    </message>
    <message>
        <source>The name of a switch</source>
        <translation>Der Name eines Schalters</translation>
    </message>
    <message>
        <source>Also sets a name that is not a known switch.</source>
        <translation>Setzt auch einen Namen, der hier nicht als Schalter bekannt ist.</translation>
    </message>
    <message>
        <source>Does not fit the list or the catalogue into the terminal.</source>
        <translation>Passt die Liste oder den Katalog nicht an das Terminal an.</translation>
    </message>
    <message>
        <source>Prints the list, the value or the catalogue as one JSON object.</source>
        <translation>Gibt die Liste, den Wert oder den Katalog als ein JSON-Objekt aus.</translation>
    </message>
    <message>
        <source>The value was printed, or the file holds it.</source>
        <translation>Der Wert wurde ausgegeben, oder die Datei enthält ihn.</translation>
    </message>
    <message>
        <source>The file cannot be read or written, the name is unknown, or the machine would refuse a value.</source>
        <translation>Die Datei kann nicht gelesen oder geschrieben werden, der Name ist unbekannt, oder die Maschine würde einen Wert ablehnen.</translation>
    </message>
    <message>
        <source>Shows what a machine would get.</source>
        <translation>Zeigt, was eine Maschine bekäme.</translation>
    </message>
    <message>
        <source>Sets a switch.</source>
        <translation>Setzt einen Schalter.</translation>
    </message>
    <message>
        <source>the name is empty</source>
        <translation>der Name ist leer</translation>
    </message>
    <message>
        <source>the environment: %1</source>
        <translation>die Umgebung: %1</translation>
    </message>
    <message>
        <source>%1 holds no zel_events.log</source>
        <translation>%1 enthält kein zel_events.log</translation>
    </message>
    <message>
        <source>there are event files in %1; give one of these folders</source>
        <translation>es gibt Ereignisdateien in %1; geben Sie einen dieser Ordner an</translation>
    </message>
    <message>
        <source> and in </source>
        <translation> und in </translation>
    </message>
    <message>
        <source>the files in %1 grow faster than they can be read</source>
        <translation>die Dateien in %1 wachsen schneller, als sie gelesen werden können</translation>
    </message>
    <message>
        <source>the files in %1 rotate faster than they can be read</source>
        <translation>die Dateien in %1 rotieren schneller, als sie gelesen werden können</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a date of the form %2</source>
        <translation>„%1“ ist kein Datum der Form %2</translation>
    </message>
    <message>
        <source>--from is after --to</source>
        <translation>--from liegt nach --to</translation>
    </message>
    <message>
        <source>unknown kind &quot;%1&quot;; the kinds are %2</source>
        <translation>unbekannte Art „%1“; die Arten sind %2</translation>
    </message>
    <message>
        <source>--page needs a number from 0 on</source>
        <translation>--page braucht eine Zahl ab 0</translation>
    </message>
    <message>
        <source>--per-page needs a number from 1 on</source>
        <translation>--per-page braucht eine Zahl ab 1</translation>
    </message>
    <message>
        <source>page %1 of %2</source>
        <translation>Seite %1 von %2</translation>
    </message>
    <message>
        <source>there is no page %1; no event matches</source>
        <translation>es gibt keine Seite %1; kein Ereignis passt</translation>
    </message>
    <message>
        <source>there is no page %1; the last one is %2</source>
        <translation>es gibt keine Seite %1; die letzte ist %2</translation>
    </message>
    <message>
        <source>%1; events are missing</source>
        <translation>%1; Ereignisse fehlen</translation>
    </message>
    <message>
        <source>Prints the events in DIR/zel_events.log.1 and DIR/zel_events.log, oldest first, a page at a time.</source>
        <translation>Gibt die Ereignisse in DIR/zel_events.log.1 und DIR/zel_events.log aus, die ältesten zuerst, eine Seite auf einmal.</translation>
    </message>
    <message>
        <source>The folder of the event files, or one above it</source>
        <translation>Der Ordner der Ereignisdateien oder einer darüber</translation>
    </message>
    <message>
        <source>A kind of events</source>
        <translation>Eine Art von Ereignissen</translation>
    </message>
    <message>
        <source>Only events of these kinds, separated by commas; may be given several times.</source>
        <translation>Nur Ereignisse dieser Arten, durch Kommas getrennt; mehrfach möglich.</translation>
    </message>
    <message>
        <source>Only events of this day and later.</source>
        <translation>Nur Ereignisse ab diesem Tag.</translation>
    </message>
    <message>
        <source>Only events of this day and earlier.</source>
        <translation>Nur Ereignisse bis zu diesem Tag.</translation>
    </message>
    <message>
        <source>Which page; 0, the default, has the newest events.</source>
        <translation>Welche Seite; 0, die Vorgabe, enthält die neuesten Ereignisse.</translation>
    </message>
    <message>
        <source>How many events make a page; 20 by default.</source>
        <translation>Wie viele Ereignisse eine Seite bilden; ohne Angabe 20.</translation>
    </message>
    <message>
        <source>Prints one JSON object with all events of the page.</source>
        <translation>Gibt ein JSON-Objekt mit allen Ereignissen der Seite aus.</translation>
    </message>
    <message>
        <source>Continues with new events after the page, until interrupted; with --json one object for each.</source>
        <translation>Setzt nach der Seite bis zum Abbruch mit neuen Ereignissen fort; mit --json je ein Objekt.</translation>
    </message>
    <message>
        <source>The page was printed.</source>
        <translation>Die Seite wurde ausgegeben.</translation>
    </message>
    <message>
        <source>There is no such folder or page, or a file could not be read to its end; the other events are printed.</source>
        <translation>Den Ordner oder die Seite gibt es nicht, oder eine Datei war nicht bis zu ihrem Ende lesbar; die übrigen Ereignisse sind ausgegeben.</translation>
    </message>
    <message>
        <source>The events of a machine.</source>
        <translation>Die Ereignisse einer Maschine.</translation>
    </message>
    <message>
        <source>Shows who entered the menu in these days.</source>
        <translation>Zeigt, wer in diesen Tagen das Menü geöffnet hat.</translation>
    </message>
    <message>
        <source>Lists the commands.</source>
        <translation>Listet die Befehle.</translation>
    </message>
    <message>
        <source>Prints the version.</source>
        <translation>Nennt die Version.</translation>
    </message>
    <message>
        <source>no folder %1</source>
        <translation>den Ordner %1 gibt es nicht</translation>
    </message>
    <message>
        <source>%1 is a file; give its folder, which is %2</source>
        <translation>%1 ist eine Datei; geben Sie ihren Ordner an, das ist %2</translation>
    </message>
    <message>
        <source>cannot read the folder %1</source>
        <translation>der Ordner %1 ist nicht lesbar</translation>
    </message>
    <message>
        <source>%1 is a folder; give the name of a file in it</source>
        <translation>%1 ist ein Ordner; geben Sie den Namen einer Datei darin an</translation>
    </message>
    <message>
        <source>Explains a command as its option --help does, or lists all commands.</source>
        <translation>Erklärt einen Befehl wie dessen Option --help, oder listet alle Befehle.</translation>
    </message>
    <message>
        <source>The command</source>
        <translation>Der Befehl</translation>
    </message>
    <message>
        <source>Writes the man pages of all commands into DIR.</source>
        <translation>Schreibt die Handbuchseiten aller Befehle in DIR.</translation>
    </message>
    <message>
        <source>The help was printed, or written.</source>
        <translation>Die Hilfe wurde ausgegeben oder geschrieben.</translation>
    </message>
    <message>
        <source>The help could not be written.</source>
        <translation>Die Hilfe konnte nicht geschrieben werden.</translation>
    </message>
    <message>
        <source>The date of the man pages, in seconds since 1970; today if it is not set.</source>
        <translation>Das Datum der Handbuchseiten in Sekunden seit 1970; ist es nicht gesetzt, gilt heute.</translation>
    </message>
    <message>
        <source>Explains a command of two words.</source>
        <translation>Erklärt einen Befehl aus zwei Wörtern.</translation>
    </message>
    <message>
        <source>there is no command &quot;%1&quot;; &quot;zelctl help&quot; lists the commands</source>
        <translation>es gibt keinen Befehl „%1“; „zelctl help“ listet die Befehle</translation>
    </message>
    <message>
        <source>line %1: %2</source>
        <translation>Zeile %1: %2</translation>
    </message>
    <message>
        <source>Prints hexadecimal text in one form, or the bytes that it means, or the text for bytes. The text may have letters of either case, &quot;-&quot;, &quot;:&quot; and 0x anywhere; white space is allowed at its ends.</source>
        <translation>Gibt hexadezimalen Text in einer Form aus, oder die Bytes, die er bedeutet, oder den Text zu Bytes. Der Text darf Groß- und Kleinbuchstaben und überall „-“, „:“ und 0x enthalten; Leerraum ist an den Enden erlaubt.</translation>
    </message>
    <message>
        <source>The text. &quot;-&quot; is the standard input: each line is a text of its own, blank ones stay blank</source>
        <translation>Der Text. „-“ ist die Standardeingabe: Jede Zeile ist ein eigener Text, leere bleiben leer</translation>
    </message>
    <message>
        <source>Begins each text with PREFIX, as it is.</source>
        <translation>Stellt jedem Text PREFIX unverändert voran.</translation>
    </message>
    <message>
        <source>Puts SEPARATOR, converted to upper case, between the bytes; &quot;-&quot; unless given.</source>
        <translation>Trennt die Bytes durch SEPARATOR, in Großbuchstaben; ohne Angabe „-“.</translation>
    </message>
    <message>
        <source>Takes TEXT, or the standard input as a whole, for the bytes themselves.</source>
        <translation>Nimmt TEXT oder die ganze Standardeingabe für die Bytes selbst.</translation>
    </message>
    <message>
        <source>Prints the bytes of all texts, one after the other.</source>
        <translation>Gibt die Bytes aller Texte nacheinander aus.</translation>
    </message>
    <message>
        <source>Prints one JSON object for each text.</source>
        <translation>Gibt ein JSON-Objekt für jeden Text aus.</translation>
    </message>
    <message>
        <source>All texts were converted.</source>
        <translation>Alle Texte wurden umgewandelt.</translation>
    </message>
    <message>
        <source>A text is not hexadecimal, or the input is too large.</source>
        <translation>Ein Text ist nicht hexadezimal, oder die Eingabe ist zu groß.</translation>
    </message>
    <message>
        <source>Prints 0xDE-AD-BE-EF.</source>
        <translation>Gibt 0xDE-AD-BE-EF aus.</translation>
    </message>
    <message>
        <source>Prints the bytes of a file.</source>
        <translation>Gibt die Bytes einer Datei aus.</translation>
    </message>
    <message>
        <source>Writes HI, without a line feed.</source>
        <translation>Schreibt HI, ohne Zeilenvorschub.</translation>
    </message>
    <message>
        <source>--to-bytes cannot be combined with other options</source>
        <translation>--to-bytes verträgt keine andere Option</translation>
    </message>
    <message>
        <source>bytes are not written to a terminal; redirect the output</source>
        <translation>Bytes könnten das Terminal steuern, leiten Sie sie in eine Datei</translation>
    </message>
    <message>
        <source>the text for so many bytes does not fit into the memory</source>
        <translation>der Text zu so vielen Bytes passt nicht in den Speicher</translation>
    </message>
    <message>
        <source>the kernel log has ended</source>
        <translation>das Kernelprotokoll ist zu Ende</translation>
    </message>
    <message>
        <source>1 record was overwritten before it was read</source>
        <translation>1 Eintrag wurde überschrieben, bevor er gelesen wurde</translation>
    </message>
    <message numerus="yes">
        <source>%n records were overwritten before they were read</source>
        <translation>
            <numerusform>%n Eintrag wurde überschrieben, bevor er gelesen wurde</numerusform>
            <numerusform>%n Einträge wurden überschrieben, bevor sie gelesen wurden</numerusform>
        </translation>
    </message>
    <message>
        <source>the kernel log has no end</source>
        <translation>das Kernelprotokoll hat kein Ende</translation>
    </message>
    <message>
        <source>Prints the log of the running kernel with time, level and facility.</source>
        <translation>Gibt das Protokoll des laufenden Kernels mit Zeit, Stufe und Facility aus.</translation>
    </message>
    <message>
        <source>A level</source>
        <translation>Eine Stufe</translation>
    </message>
    <message>
        <source>Facilities</source>
        <translation>Facilitys</translation>
    </message>
    <message>
        <source>Only this level and more severe ones.</source>
        <translation>Nur diese Stufe und schwerere.</translation>
    </message>
    <message>
        <source>Only these facilities, separated by commas; may be given several times.</source>
        <translation>Nur diese Facilitys, durch Kommas getrennt; kann mehrfach angegeben werden.</translation>
    </message>
    <message>
        <source>Continues with new records, until interrupted.</source>
        <translation>Setzt bis zum Abbruch mit neuen Einträgen fort.</translation>
    </message>
    <message>
        <source>Prints one JSON object for each record.</source>
        <translation>Gibt ein JSON-Objekt für jeden Eintrag aus.</translation>
    </message>
    <message>
        <source>The records were printed.</source>
        <translation>Die Einträge wurden ausgegeben.</translation>
    </message>
    <message>
        <source>The log cannot be read; the kernel may show it to root only.</source>
        <translation>Das Protokoll ist nicht lesbar; vielleicht zeigt der Kernel es nur root.</translation>
    </message>
    <message>
        <source>The log of the kernel.</source>
        <translation>Das Protokoll des Kernels.</translation>
    </message>
    <message>
        <source>Follows what the kernel warns of.</source>
        <translation>Folgt den Warnungen des Kernels.</translation>
    </message>
    <message>
        <source>unknown level &quot;%1&quot;; the levels are %2</source>
        <translation>unbekannte Stufe „%1“; die Stufen sind %2</translation>
    </message>
    <message>
        <source>unknown facility &quot;%1&quot;; the facilities are %2</source>
        <translation>unbekannte Facility „%1“; die Facilitys sind %2</translation>
    </message>
    <message>
        <source>tar cannot be started</source>
        <translation>tar kann nicht gestartet werden</translation>
    </message>
    <message>
        <source>tar finds it damaged</source>
        <translation>tar hält es für beschädigt</translation>
    </message>
    <message>
        <source>the machine lost 1 line in this period</source>
        <translation>die Maschine hat in dieser Zeit 1 Zeile verloren</translation>
    </message>
    <message numerus="yes">
        <source>the machine lost %n lines in this period</source>
        <translation>
            <numerusform>die Maschine hat in dieser Zeit %n Zeile verloren</numerusform>
            <numerusform>die Maschine hat in dieser Zeit %n Zeilen verloren</numerusform>
        </translation>
    </message>
    <message>
        <source>%1; lines are missing</source>
        <translation>%1; Zeilen fehlen</translation>
    </message>
    <message>
        <source>%1 rotates faster than it can be read</source>
        <translation>%1 rotiert schneller, als es gelesen werden kann</translation>
    </message>
    <message>
        <source>lines do not name their module; &quot;%1&quot; is neither a file (%2) nor a kind of events (%3)</source>
        <translation>Zeilen nennen ihr Modul nicht; „%1“ ist weder eine Datei (%2) noch eine Art von Ereignissen (%3)</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a time of the form dd/MM/yyyy or dd/MM/yyyy hh:mm or dd/MM/yyyy hh:mm:ss</source>
        <translation>„%1“ ist keine Zeit der Form dd/MM/yyyy oder dd/MM/yyyy hh:mm oder dd/MM/yyyy hh:mm:ss</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a regular expression: %2</source>
        <translation>„%1“ ist kein regulärer Ausdruck: %2</translation>
    </message>
    <message>
        <source>--last needs a number from 0 on</source>
        <translation>--last braucht eine Zahl ab 0</translation>
    </message>
    <message>
        <source>--color is auto, always or never</source>
        <translation>--color ist auto, always oder never</translation>
    </message>
    <message>
        <source>Prints the log files in DIR, with their predecessors, merged by time. DIR has the files, or the folders debug and events, or logs with these two.

A line that names no level counts as Event in the event files, and as Info in others. Lines do not name their module.</source>
        <translation>Gibt die Protokolldateien in DIR samt ihren Vorgängern nach Zeit gemischt aus. DIR enthält die Dateien, oder die Ordner debug und events, oder logs mit diesen beiden.

Eine Zeile ohne Stufe zählt in den Ereignisdateien als Event und in anderen als Info. Zeilen nennen ihr Modul nicht.</translation>
    </message>
    <message>
        <source>Writes the lines that killed processes have left; &quot;zelctl help log recover&quot; explains it.</source>
        <translation>Schreibt die Zeilen, die abgebrochene Prozesse hinterlassen haben; „zelctl help log recover“ erklärt es.</translation>
    </message>
    <message>
        <source>The folder of the log files</source>
        <translation>Der Ordner der Protokolldateien</translation>
    </message>
    <message>
        <source>A file, or a kind of events</source>
        <translation>Eine Datei oder eine Art von Ereignissen</translation>
    </message>
    <message>
        <source>Only lines of this level and more severe ones.</source>
        <translation>Nur Zeilen dieser Stufe und schwererer.</translation>
    </message>
    <message>
        <source>Only lines of these files or kinds of events, separated by commas; may be given several times.</source>
        <translation>Nur Zeilen dieser Dateien oder Arten von Ereignissen, durch Kommas getrennt; mehrfach möglich.</translation>
    </message>
    <message>
        <source>Only lines that contain this regular expression.</source>
        <translation>Nur Zeilen, die diesen regulären Ausdruck enthalten.</translation>
    </message>
    <message>
        <source>Only lines of this time and later.</source>
        <translation>Nur Zeilen ab dieser Zeit.</translation>
    </message>
    <message>
        <source>Only lines of this time and earlier, up to the end of this day, minute or second.</source>
        <translation>Nur Zeilen bis zu dieser Zeit, einschließlich dieses Tages, dieser Minute oder Sekunde.</translation>
    </message>
    <message>
        <source>Only the last N of these lines.</source>
        <translation>Nur die letzten N dieser Zeilen.</translation>
    </message>
    <message>
        <source>Continues with new lines, also after a rotation, until interrupted.</source>
        <translation>Setzt bis zum Abbruch mit neuen Zeilen fort, auch nach einer Rotation.</translation>
    </message>
    <message>
        <source>Prints one JSON object for each line.</source>
        <translation>Gibt je Zeile ein JSON-Objekt aus.</translation>
    </message>
    <message>
        <source>Colours the lines by their levels; auto unless given.</source>
        <translation>Färbt die Zeilen nach ihrer Stufe; ohne Angabe auto.</translation>
    </message>
    <message>
        <source>The lines were printed.</source>
        <translation>Die Zeilen wurden ausgegeben.</translation>
    </message>
    <message>
        <source>There are no log files, or one could not be read to its end; the other lines are printed.</source>
        <translation>Es gibt keine Protokolldateien, oder eine war nicht bis zu ihrem Ende lesbar; die übrigen Zeilen sind ausgegeben.</translation>
    </message>
    <message>
        <source>The program that shows the lines on a terminal; empty for none, less if it is not set.</source>
        <translation>Das Programm, das die Zeilen auf einem Terminal zeigt; leer für keines, less, wenn es nicht gesetzt ist.</translation>
    </message>
    <message>
        <source>Turns off the colours of --color auto.</source>
        <translation>Schaltet die Farben von --color auto aus.</translation>
    </message>
    <message>
        <source>Turns them off, too, if it is dumb.</source>
        <translation>Schaltet sie ebenfalls aus, wenn es dumb ist.</translation>
    </message>
    <message>
        <source>Shows what went wrong since three o&apos;clock.</source>
        <translation>Zeigt, was seit drei Uhr schiefging.</translation>
    </message>
    <message>
        <source>Follows what the log says of the coin changer.</source>
        <translation>Folgt dem, was das Protokoll über den Münzwechsler sagt.</translation>
    </message>
    <message>
        <source>a command is missing; &quot;zelctl --help&quot; lists the commands</source>
        <translation>ein Befehl fehlt; „zelctl --help“ listet die Befehle</translation>
    </message>
    <message>
        <source>unknown command &quot;%1&quot;; &quot;zelctl --help&quot; lists the commands</source>
        <translation>unbekannter Befehl „%1“; „zelctl --help“ listet die Befehle</translation>
    </message>
    <message>
        <source>SYNOPSIS</source>
        <translation>ÜBERSICHT</translation>
    </message>
    <message>
        <source>DESCRIPTION</source>
        <translation>BESCHREIBUNG</translation>
    </message>
    <message>
        <source>zelctl works with the files of a machine that uses the library ZelTools: its logs, reports, switches and encrypted files; and with the simulators beside it. Each command has a page of its own.</source>
        <translation>zelctl arbeitet mit den Dateien einer Maschine, die die Bibliothek ZelTools verwendet: ihren Protokollen, Berichten, Schaltern und verschlüsselten Dateien; und mit den Simulatoren neben ihr. Jeder Befehl hat eine eigene Seite.</translation>
    </message>
    <message>
        <source>OPTIONS</source>
        <translation>OPTIONEN</translation>
    </message>
    <message>
        <source>EXIT STATUS</source>
        <translation>RÜCKGABEWERT</translation>
    </message>
    <message>
        <source>Companion of the library ZelTools.</source>
        <translation>Begleitprogramm der Bibliothek ZelTools.</translation>
    </message>
    <message>
        <source>SEE ALSO</source>
        <translation>SIEHE AUCH</translation>
    </message>
    <message>
        <source>ENVIRONMENT</source>
        <translation>UMGEBUNG</translation>
    </message>
    <message>
        <source>FILES</source>
        <translation>DATEIEN</translation>
    </message>
    <message>
        <source>EXAMPLES</source>
        <translation>BEISPIELE</translation>
    </message>
    <message>
        <source>it is too large</source>
        <translation>es ist zu groß</translation>
    </message>
    <message>
        <source>it is a folder, not a file</source>
        <translation>es ist ein Ordner, keine Datei</translation>
    </message>
    <message>
        <source>it is not a file</source>
        <translation>es ist keine Datei</translation>
    </message>
    <message>
        <source>the standard input</source>
        <translation>die Standardeingabe</translation>
    </message>
    <message>
        <source>Writes to the log files below DIR what killed processes with buffered logging have left in their rings. The next start of the application does the same. Lines without a file go to stderr.</source>
        <translation>Schreibt in die Protokolldateien unterhalb von DIR, was abgebrochene Prozesse mit gepuffertem Protokoll in ihren Ringpuffern hinterlassen haben. Der nächste Start der Anwendung tut dasselbe. Zeilen ohne Datei gehen nach stderr.</translation>
    </message>
    <message>
        <source>Looks for rings in FOLDER, too; may be given several times.</source>
        <translation>Sucht auch in FOLDER nach Ringpuffern; kann mehrfach angegeben werden.</translation>
    </message>
    <message>
        <source>Prints one JSON object with the number of lines.</source>
        <translation>Gibt ein JSON-Objekt mit der Anzahl der Zeilen aus.</translation>
    </message>
    <message>
        <source>The lines were written.</source>
        <translation>Die Zeilen wurden geschrieben.</translation>
    </message>
    <message>
        <source>There is no such folder, or a ring or a log file has a problem.</source>
        <translation>Den Ordner gibt es nicht, oder ein Ringpuffer oder eine Protokolldatei hat einen Fehler.</translation>
    </message>
    <message>
        <source>Recovers the lines of a machine.</source>
        <translation>Rettet die Zeilen einer Maschine.</translation>
    </message>
    <message>
        <source>1 line recovered</source>
        <translation>1 Zeile gerettet</translation>
    </message>
    <message numerus="yes">
        <source>%n lines recovered</source>
        <translation>
            <numerusform>%n Zeile gerettet</numerusform>
            <numerusform>%n Zeilen gerettet</numerusform>
        </translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a value for %2, which is 0 or 1</source>
        <translation>„%1“ ist kein Wert für %2, erlaubt ist 0 oder 1</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a value for %2, which is of type %3</source>
        <translation>„%1“ ist kein Wert für %2, das vom Typ %3 ist</translation>
    </message>
    <message>
        <source>the machine reads in the order of the names and stops before %1: %2</source>
        <translation>die Maschine liest in der Reihenfolge der Namen und hält vor %1 an: %2</translation>
    </message>
    <message>
        <source>--%1 is only valid with %2</source>
        <translation>--%1 gehört zu %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not the address of a link</source>
        <translation>„%1“ ist keine Adresse einer Verbindung</translation>
    </message>
    <message>
        <source>--as is simulator or machine</source>
        <translation>--as ist simulator oder machine</translation>
    </message>
    <message>
        <source>--timeout is a time such as 1.5s or 2min</source>
        <translation>--timeout ist eine Zeit wie 1.5s oder 2min</translation>
    </message>
    <message>
        <source>Plays the simulator&apos;s end of a link to a machine, and records and replays links.</source>
        <translation>Spielt das Simulator-Ende einer Verbindung zu einer Maschine, zeichnet Verbindungen auf und spielt sie ab.</translation>
    </message>
    <message>
        <source>Answers a machine as the rows of a script say; ADDRESS is tcpserver/127.0.0.1/0 unless given.</source>
        <translation>Antwortet einer Maschine nach den Zeilen eines Skripts; ADDRESS ist ohne Angabe tcpserver/127.0.0.1/0.</translation>
    </message>
    <message>
        <source>Stands between a machine and the simulator at ADDRESS, and records both ways with times. FILE is emptied first.</source>
        <translation>Steht zwischen einer Maschine und dem Simulator unter ADDRESS und zeichnet beide Richtungen mit Zeiten auf. FILE wird zuerst geleert.</translation>
    </message>
    <message>
        <source>Plays one side of a recording, and reports the first difference of what the other side does.</source>
        <translation>Spielt eine Seite einer Aufzeichnung ab und meldet die erste Abweichung der anderen Seite.</translation>
    </message>
    <message>
        <source>The script of a simulator</source>
        <translation>Das Skript eines Simulators</translation>
    </message>
    <message>
        <source>The recording</source>
        <translation>Die Aufzeichnung</translation>
    </message>
    <message>
        <source>tcpserver/IP/PORT or unixserver/PATH to listen, tcpclient/IP/PORT or unixclient/PATH to connect. A port 0 lets the system choose; the real one is printed</source>
        <translation>tcpserver/IP/PORT oder unixserver/PATH zum Lauschen, tcpclient/IP/PORT oder unixclient/PATH zum Verbinden. Bei Port 0 wählt das System; der wirkliche wird ausgegeben</translation>
    </message>
    <message>
        <source>serve: ends after the first connection; otherwise it serves until interrupted.</source>
        <translation>serve: endet nach der ersten Verbindung; sonst dient es bis zum Abbruch.</translation>
    </message>
    <message>
        <source>record: where the machine is, or where it connects; tcpserver/127.0.0.1/0 unless given.</source>
        <translation>record: wo die Maschine ist oder wohin sie sich verbindet; ohne Angabe tcpserver/127.0.0.1/0.</translation>
    </message>
    <message>
        <source>replay: the side to play; simulator unless given.</source>
        <translation>replay: die gespielte Seite; ohne Angabe simulator.</translation>
    </message>
    <message>
        <source>replay: sends at the recorded times; otherwise as soon as it can.</source>
        <translation>replay: sendet zu den aufgezeichneten Zeiten; sonst so früh wie möglich.</translation>
    </message>
    <message>
        <source>replay: how much later than recorded the other side may act, such as 1.5s or 2min; 10s unless given.</source>
        <translation>replay: wie viel später als aufgezeichnet die andere Seite handeln darf, etwa 1.5s oder 2min; ohne Angabe 10s.</translation>
    </message>
    <message>
        <source>Prints the address as a JSON object.</source>
        <translation>Gibt die Adresse als JSON-Objekt aus.</translation>
    </message>
    <message>
        <source>serve or record has ended without a problem, or a replay saw no difference.</source>
        <translation>serve oder record endete ohne Problem, oder eine Wiedergabe fand keine Abweichung.</translation>
    </message>
    <message>
        <source>A file or an address cannot be used, or a replay saw a difference or was interrupted.</source>
        <translation>Eine Datei oder Adresse ist nicht brauchbar, oder eine Wiedergabe fand eine Abweichung oder wurde abgebrochen.</translation>
    </message>
    <message>
        <source>Plays a grinder.</source>
        <translation>Spielt eine Mühle.</translation>
    </message>
    <message>
        <source>Plays what a simulator did.</source>
        <translation>Spielt ab, was ein Simulator getan hat.</translation>
    </message>
    <message>
        <source>the replay was stopped</source>
        <translation>die Wiedergabe wurde abgebrochen</translation>
    </message>
    <message>
        <source>the command was interrupted</source>
        <translation>der Befehl wurde abgebrochen</translation>
    </message>
    <message>
        <source>cannot listen on %1: %2</source>
        <translation>auf %1 kann nicht gelauscht werden: %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; in &quot;%2&quot; is not a number of a version</source>
        <translation>„%1“ in „%2“ ist keine Zahl einer Version</translation>
    </message>
    <message>
        <source>%1 and %2 have different numbers of parts, which the machine warns of; only those that both have decide between &lt; and &gt;</source>
        <translation>%1 und %2 haben verschieden viele Teile, wovor die Maschine warnt; nur die gemeinsamen entscheiden zwischen &lt; und &gt;</translation>
    </message>
    <message>
        <source>Compares two versions, such as 2.9 and 2.10, as the machine does: prints &lt;, = or &gt; as A is to B. For versions of which one begins with the other (1.2 and 1.2.7) the machine says yes to none of these; that is printed as != and explained on stderr.

With one version it prints that in its usual form, with none the version of the library.</source>
        <translation>Vergleicht zwei Versionen wie 2.9 und 2.10 so wie die Maschine: gibt &lt;, = oder &gt; aus, wie A zu B steht. Bei Versionen, von denen eine mit der anderen beginnt (1.2 und 1.2.7), verneint die Maschine alle drei; das wird als != ausgegeben und auf stderr erklärt.

Mit einer Version gibt es diese in ihrer üblichen Form aus, ohne Version die der Bibliothek.</translation>
    </message>
    <message>
        <source>A version</source>
        <translation>Eine Version</translation>
    </message>
    <message>
        <source>Another version</source>
        <translation>Eine andere Version</translation>
    </message>
    <message>
        <source>The versions were compared, or the version was printed.</source>
        <translation>Die Versionen wurden verglichen, oder die Version wurde ausgegeben.</translation>
    </message>
    <message>
        <source>A text is not a version.</source>
        <translation>Ein Text ist keine Version.</translation>
    </message>
    <message>
        <source>Prints &lt;.</source>
        <translation>Gibt &lt; aus.</translation>
    </message>
</context>
</TS>
