<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="it" sourcelanguage="en">
<context>
    <name>QCommandLineParser</name>
    <message>
        <source>Unknown option &apos;%1&apos;.</source>
        <translation>Opzione &quot;%1&quot; sconosciuta.</translation>
    </message>
    <message>
        <source>Unknown options: %1.</source>
        <translation>Opzioni sconosciute: %1.</translation>
    </message>
    <message>
        <source>Missing value after &apos;%1&apos;.</source>
        <translation>Manca un valore dopo &quot;%1&quot;.</translation>
    </message>
    <message>
        <source>Unexpected value after &apos;%1&apos;.</source>
        <translation>Valore inatteso dopo &quot;%1&quot;.</translation>
    </message>
</context>
<context>
    <name>zelctl</name>
    <message>
        <source>addr2line of binutils is missing, so calls have no names</source>
        <translation>manca addr2line di binutils, perciò le chiamate non hanno nomi</translation>
    </message>
    <message>
        <source>addr2line takes too long for %1</source>
        <translation>addr2line impiega troppo tempo per %1</translation>
    </message>
    <message>
        <source>addr2line cannot read %1</source>
        <translation>addr2line non può leggere %1</translation>
    </message>
    <message>
        <source>addr2line does not give the names in %1 one by one</source>
        <translation>addr2line non dà i nomi in %1 uno per uno</translation>
    </message>
    <message>
        <source>--level is a number above 0</source>
        <translation>--level è un numero maggiore di 0</translation>
    </message>
    <message>
        <source>Packs the logs of a machine and a description of the running system into one file, and reads such a file without unpacking it.

OUT appears when it is complete. What cannot be read is named on stderr and in the manifest. For a name that ends in .crypt, the key comes from --key-file or from the environment variable ZEL_KEY; the cipher only protects against casual reading.</source>
        <translation>Raccoglie i log di una macchina e una descrizione del sistema in esecuzione in un unico file, e legge un tale file senza estrarlo.

OUT appare quando è completo. Ciò che non si può leggere è indicato su stderr e nel manifesto. Per un nome che termina con .crypt la chiave viene da --key-file o dalla variabile di ambiente ZEL_KEY; la cifratura protegge solo da una lettura casuale.</translation>
    </message>
    <message>
        <source>Packs the log files.</source>
        <translation>Raccoglie i file di log.</translation>
    </message>
    <message>
        <source>Checks that all files are there and undamaged.</source>
        <translation>Verifica che tutti i file ci siano e siano integri.</translation>
    </message>
    <message>
        <source>Shows which files there are.</source>
        <translation>Mostra quali file ci sono.</translation>
    </message>
    <message>
        <source>The folder &quot;logs&quot;, the one above it, or a folder with log files</source>
        <translation>La cartella &quot;logs&quot;, quella superiore, o una cartella con file di log</translation>
    </message>
    <message>
        <source>The new file; its name ends in .tar.zst or .tar.gz, or with .crypt behind that</source>
        <translation>Il nuovo file; il suo nome termina con .tar.zst o .tar.gz, eventualmente seguito da .crypt</translation>
    </message>
    <message>
        <source>Reads the key, 16 hexadecimal digits, from FILE.</source>
        <translation>Legge la chiave, 16 cifre esadecimali, da FILE.</translation>
    </message>
    <message>
        <source>Adds this environment file, with the values of secrets masked.</source>
        <translation>Aggiunge questo file di ambiente, con i valori segreti mascherati.</translation>
    </message>
    <message>
        <source>Compression: 1 to 19 for .tar.zst (3), 1 to 9 for .tar.gz (6).</source>
        <translation>Compressione: da 1 a 19 per .tar.zst (3), da 1 a 9 per .tar.gz (6).</translation>
    </message>
    <message>
        <source>list: prints the manifest. verify: prints one JSON object.</source>
        <translation>list: stampa il manifesto. verify: stampa un oggetto JSON.</translation>
    </message>
    <message>
        <source>The bundle is complete, though what could not be read may be missing; or the file that was read is a complete bundle.</source>
        <translation>Il pacchetto è completo, anche se può mancare ciò che non si è potuto leggere; o il file letto è un pacchetto completo.</translation>
    </message>
    <message>
        <source>There is no bundle, it is damaged, or the key is missing or wrong.</source>
        <translation>Non c&apos;è un pacchetto, è danneggiato, o la chiave manca o è errata.</translation>
    </message>
    <message>
        <source>The key, 16 hexadecimal digits, without --key-file.</source>
        <translation>La chiave, 16 cifre esadecimali, senza --key-file.</translation>
    </message>
    <message>
        <source>Packs all logs of a machine.</source>
        <translation>Raccoglie tutti i log di una macchina.</translation>
    </message>
    <message>
        <source>Prints the manifest as JSON.</source>
        <translation>Stampa il manifesto come JSON.</translation>
    </message>
    <message>
        <source>this zelctl was built without libarchive, which bundles need</source>
        <translation>questo zelctl è stato compilato senza libarchive, necessaria per i pacchetti</translation>
    </message>
    <message>
        <source>not in the bundle: %1: %2</source>
        <translation>non nel pacchetto: %1: %2</translation>
    </message>
    <message>
        <source>losses.json is incomplete: %1</source>
        <translation>losses.json è incompleto: %1</translation>
    </message>
    <message>
        <source>%1 ends with %2 bytes of zeros: %3</source>
        <translation>%1 termina con %2 byte a zero: %3</translation>
    </message>
    <message>
        <source>%1 holds no log files</source>
        <translation>%1 non contiene file di log</translation>
    </message>
    <message>
        <source>writing %1 would lose the key or the environment file</source>
        <translation>scrivendo %1 si perderebbe la chiave o il file di ambiente</translation>
    </message>
    <message>
        <source>reading</source>
        <translation>lettura</translation>
    </message>
    <message>
        <source>packing</source>
        <translation>raccolta</translation>
    </message>
    <message>
        <source>1 file in %1</source>
        <translation>1 file in %1</translation>
    </message>
    <message numerus="yes">
        <source>%n files in %1</source>
        <translation>
            <numerusform>%n file in %1</numerusform>
            <numerusform>%n file in %1</numerusform>
        </translation>
    </message>
    <message>
        <source>checking</source>
        <translation>verifica</translation>
    </message>
    <message>
        <source>complete: 1 file of %1</source>
        <translation>completo: 1 file del %1</translation>
    </message>
    <message numerus="yes">
        <source>complete: %n files of %1</source>
        <translation>
            <numerusform>completo: %n file del %1</numerusform>
            <numerusform>completo: %n file del %1</numerusform>
        </translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a date and time of the form %2</source>
        <translation>&quot;%1&quot; non è una data e ora della forma %2</translation>
    </message>
    <message>
        <source>there is no time zone &quot;%1&quot;</source>
        <translation>non esiste il fuso orario &quot;%1&quot;</translation>
    </message>
    <message>
        <source>this computer&apos;s time zone skips %1; --zone names that of the machine</source>
        <translation>il fuso orario di questo computer salta %1; --zone indica quello della macchina</translation>
    </message>
    <message>
        <source>%1 skips %2</source>
        <translation>%1 salta %2</translation>
    </message>
    <message>
        <source>--zone is only valid with --set</source>
        <translation>--zone va con --set</translation>
    </message>
    <message>
        <source>--timeout needs a number of seconds from 1 to 86400</source>
        <translation>--timeout richiede un numero di secondi da 1 a 86400</translation>
    </message>
    <message>
        <source>The simulator&apos;s end of a simulated clock: sets the clock of a machine, or prints the dates and times, in UTC, that the machine asks for, the first one or all.

A server waits for the machine to connect, a client connects to it; the machine has the other one of the two.</source>
        <translation>Il lato simulatore di un orologio simulato: imposta l&apos;orologio di una macchina, o stampa le date e ore, in UTC, che la macchina chiede, la prima o tutte.

Un server attende che la macchina si connetta, un client si connette ad essa; la macchina ha l&apos;altro dei due.</translation>
    </message>
    <message>
        <source>tcpserver/IP/PORT, tcpclient/IP/PORT, unixserver/PATH or unixclient/PATH</source>
        <translation>tcpserver/IP/PORT, tcpclient/IP/PORT, unixserver/PATH o unixclient/PATH</translation>
    </message>
    <message>
        <source>yyyy/MM/dd hh:mm:ss in the machine&apos;s zone</source>
        <translation>yyyy/MM/dd hh:mm:ss nel fuso orario della macchina</translation>
    </message>
    <message>
        <source>Sets the clock to TIME. It is done when the time has been sent and the machine has not closed the link within a second; it does not confirm it.</source>
        <translation>Imposta l&apos;orologio a TIME. È fatto quando l&apos;ora è stata inviata e la macchina non ha chiuso il collegamento entro un secondo; la macchina non lo conferma.</translation>
    </message>
    <message>
        <source>The machine&apos;s zone, such as Europe/Rome, where it is not this computer&apos;s. A time that the zone skips is refused, since it would make the machine&apos;s clock invalid.</source>
        <translation>Il fuso orario della macchina, come Europe/Rome, se non è quello di questo computer. Un&apos;ora che il fuso salta è rifiutata, perché renderebbe non valido l&apos;orologio della macchina.</translation>
    </message>
    <message>
        <source>Prints all that the machine asks for, until interrupted. A clock that was set runs on: a machine that connects again gets the time that it then shows.</source>
        <translation>Stampa tutto ciò che la macchina chiede, fino all&apos;interruzione. Un orologio impostato continua a correre: una macchina che si riconnette riceve l&apos;ora che esso segna in quel momento.</translation>
    </message>
    <message>
        <source>Prints one JSON object for each time that was asked for, or set.</source>
        <translation>Stampa un oggetto JSON per ogni ora chiesta o impostata.</translation>
    </message>
    <message>
        <source>Gives up after SECONDS, without --follow; 10 unless given.</source>
        <translation>Rinuncia dopo SECONDS, senza --follow; 10 se non indicato.</translation>
    </message>
    <message>
        <source>The time was sent, or printed.</source>
        <translation>L&apos;ora è stata inviata o stampata.</translation>
    </message>
    <message>
        <source>The machine did not connect, did not ask in time, or closed the link; or the command was interrupted without --follow.</source>
        <translation>La macchina non si è connessa, non ha chiesto in tempo o ha chiuso il collegamento; oppure il comando è stato interrotto senza --follow.</translation>
    </message>
    <message>
        <source>Sets the clock of the machine that listens on port 8133.</source>
        <translation>Imposta l&apos;orologio della macchina in ascolto sulla porta 8133.</translation>
    </message>
    <message>
        <source>no machine has asked for a time in %1 s</source>
        <translation>nessuna macchina ha chiesto un&apos;ora in %1 s</translation>
    </message>
    <message>
        <source>no machine has connected in %1 s</source>
        <translation>nessuna macchina si è connessa in %1 s</translation>
    </message>
    <message>
        <source>the machine has closed the link, it may have another simulator</source>
        <translation>la macchina ha chiuso il collegamento, forse ha un altro simulatore</translation>
    </message>
    <message>
        <source>the machine has closed the link</source>
        <translation>la macchina ha chiuso il collegamento</translation>
    </message>
    <message>
        <source>%1; waiting for it</source>
        <translation>%1; in attesa che torni</translation>
    </message>
    <message>
        <source>cannot write the output: %1</source>
        <translation>impossibile scrivere l&apos;output: %1</translation>
    </message>
    <message>
        <source>Examples</source>
        <translation>Esempi</translation>
    </message>
    <message>
        <source>Usage: zelctl COMMAND [options]</source>
        <translation>Uso: zelctl COMMAND [options]</translation>
    </message>
    <message>
        <source>Commands</source>
        <translation>Comandi</translation>
    </message>
    <message>
        <source>&quot;zelctl help COMMAND&quot; explains a command, and &quot;zelctl --version&quot; prints the version.</source>
        <translation>&quot;zelctl help COMMAND&quot; spiega un comando, &quot;zelctl --version&quot; indica la versione.</translation>
    </message>
    <message>
        <source>Usage: %1</source>
        <translation>Uso: %1</translation>
    </message>
    <message>
        <source>Actions</source>
        <translation>Azioni</translation>
    </message>
    <message>
        <source>Options</source>
        <translation>Opzioni</translation>
    </message>
    <message>
        <source>Values</source>
        <translation>Valori</translation>
    </message>
    <message>
        <source>Environment</source>
        <translation>Ambiente</translation>
    </message>
    <message>
        <source>Files</source>
        <translation>File</translation>
    </message>
    <message>
        <source>Exit status</source>
        <translation>Stato di uscita</translation>
    </message>
    <message>
        <source>All is done.</source>
        <translation>Tutto è fatto.</translation>
    </message>
    <message>
        <source>It failed; one line on stderr gives the reason.</source>
        <translation>Non è riuscito; una riga su stderr ne indica il motivo.</translation>
    </message>
    <message>
        <source>The command line is wrong. Nothing has been done.</source>
        <translation>La riga di comando è errata. Non è stato fatto nulla.</translation>
    </message>
    <message>
        <source>Shows this help.</source>
        <translation>Mostra questo aiuto.</translation>
    </message>
    <message>
        <source>the arguments are not UTF-8</source>
        <translation>gli argomenti non sono UTF-8</translation>
    </message>
    <message>
        <source>%1; see &quot;%2 --help&quot;</source>
        <translation>%1; vedere &quot;%2 --help&quot;</translation>
    </message>
    <message>
        <source>--%1 is given more than once</source>
        <translation>--%1 è indicato più di una volta</translation>
    </message>
    <message>
        <source>Packs the logs of a machine into one file for support, checks such files.</source>
        <translation>Raccoglie i log di una macchina in un file per l&apos;assistenza, verifica tali file.</translation>
    </message>
    <message>
        <source>Drives the simulated clock of a machine.</source>
        <translation>Comanda l&apos;orologio simulato di una macchina.</translation>
    </message>
    <message>
        <source>Prints the script by which a shell completes zelctl.</source>
        <translation>Stampa lo script con cui una shell completa zelctl.</translation>
    </message>
    <message>
        <source>Lists and shows the crash reports of a machine.</source>
        <translation>Elenca e mostra i rapporti di crash di una macchina.</translation>
    </message>
    <message>
        <source>Encrypts and decrypts files, shows what their header says.</source>
        <translation>Cifra e decifra file, mostra che cosa dice la loro intestazione.</translation>
    </message>
    <message>
        <source>Shows and edits the environment file of a machine.</source>
        <translation>Mostra e modifica il file di ambiente di una macchina.</translation>
    </message>
    <message>
        <source>Shows the event history of a machine in pages.</source>
        <translation>Mostra a pagine la cronologia degli eventi di una macchina.</translation>
    </message>
    <message>
        <source>Explains a command.</source>
        <translation>Spiega un comando.</translation>
    </message>
    <message>
        <source>Normalizes hexadecimal text, or converts it into bytes and back.</source>
        <translation>Porta un testo esadecimale in una forma unica, o in byte e viceversa.</translation>
    </message>
    <message>
        <source>Prints the log of the running kernel, and follows it.</source>
        <translation>Stampa il log del kernel in esecuzione e lo segue.</translation>
    </message>
    <message>
        <source>Prints the log files of a machine, merged by time, and searches them.</source>
        <translation>Stampa i file di log di una macchina, uniti in ordine di tempo, e vi cerca.</translation>
    </message>
    <message>
        <source>Writes the log lines that killed processes have left.</source>
        <translation>Scrive le righe di log lasciate dai processi terminati.</translation>
    </message>
    <message>
        <source>Plays the simulator of a machine from a script, records and replays links.</source>
        <translation>Fa da simulatore di una macchina secondo uno script, registra e riproduce collegamenti.</translation>
    </message>
    <message>
        <source>Compares two versions, or prints that of the library.</source>
        <translation>Confronta due versioni, indica quella della libreria.</translation>
    </message>
    <message>
        <source>%1 is empty</source>
        <translation>%1 è vuoto</translation>
    </message>
    <message>
        <source>%1 is missing in &quot;%2&quot;</source>
        <translation>manca %1 in &quot;%2&quot;</translation>
    </message>
    <message>
        <source>unexpected argument &quot;%1&quot;; usage: %2</source>
        <translation>argomento &quot;%1&quot; di troppo; uso: %2</translation>
    </message>
    <message>
        <source>unknown action &quot;%1&quot;; the actions are: %2</source>
        <translation>azione &quot;%1&quot; sconosciuta; le forme sono: %2</translation>
    </message>
    <message>
        <source>an action is missing; the actions are: %1</source>
        <translation>manca un&apos;azione; le forme sono: %1</translation>
    </message>
    <message>
        <source>Prints a script by which a shell completes command lines of zelctl: commands, actions, options, the names of switches, kinds of events, modules, levels, files and folders. The package installs these scripts; elsewhere they can be read by the files that a shell reads at its start.</source>
        <translation>Stampa uno script con cui una shell completa le righe di comando di zelctl: comandi, azioni, opzioni, nomi degli interruttori, tipi di eventi, moduli, livelli, file e cartelle. Il pacchetto installa questi script; altrove possono leggerli i file che una shell legge all&apos;avvio.</translation>
    </message>
    <message>
        <source>The script for bash 4.4 or later; it does not need bash-completion.</source>
        <translation>Lo script per bash 4.4 o successivo; non richiede bash-completion.</translation>
    </message>
    <message>
        <source>The script for zsh, after compinit, or for a folder in fpath by the name _zelctl.</source>
        <translation>Lo script per zsh, dopo compinit, o per una cartella in fpath con il nome _zelctl.</translation>
    </message>
    <message>
        <source>The script for fish 3.2 or later.</source>
        <translation>Lo script per fish 3.2 o successivo.</translation>
    </message>
    <message>
        <source>The script was printed.</source>
        <translation>Lo script è stato stampato.</translation>
    </message>
    <message>
        <source>The script could not be written.</source>
        <translation>Non è stato possibile scrivere lo script.</translation>
    </message>
    <message>
        <source>Completes in this bash, and from ~/.bashrc in all.</source>
        <translation>Completa in questo bash, e da ~/.bashrc in tutti.</translation>
    </message>
    <message>
        <source>Completes in each fish.</source>
        <translation>Completa in ogni fish.</translation>
    </message>
    <message>
        <source>%1 is a folder; &quot;zelctl crash list&quot; names the reports in it</source>
        <translation>%1 è una cartella; &quot;zelctl crash list&quot; indica i rapporti in essa</translation>
    </message>
    <message>
        <source>Shows the crash reports of a machine.

The names of functions come from files with the same build id as the program or library that crashed: without --symbols from /usr/lib/debug/.build-id and from the programs and libraries of this machine. addr2line of binutils reads them.</source>
        <translation>Mostra i rapporti di crash di una macchina.

I nomi delle funzioni vengono da file con lo stesso identificatore di build del programma o della libreria in crash: senza --symbols da /usr/lib/debug/.build-id e dai programmi e dalle librerie di questo computer. Li legge addr2line di binutils.</translation>
    </message>
    <message>
        <source>One line for each report in the folder: time, signal, whether the report is complete, program, file, reason; the newest first.</source>
        <translation>Una riga per ogni rapporto nella cartella: ora, segnale, se il rapporto è completo, programma, file, motivo; prima il più recente.</translation>
    </message>
    <message>
        <source>One report with all call stacks, the threads of the monitor, the last log lines, registers and modules.</source>
        <translation>Un rapporto con tutti gli stack delle chiamate, i thread sorvegliati, le ultime righe di log, i registri e i moduli.</translation>
    </message>
    <message>
        <source>The folder of the reports, or of the symbols</source>
        <translation>La cartella dei rapporti, o dei simboli</translation>
    </message>
    <message>
        <source>The report</source>
        <translation>Il rapporto</translation>
    </message>
    <message>
        <source>show: takes the symbols from the files in this folder and below.</source>
        <translation>show: prende i simboli dai file in questa cartella e al di sotto.</translation>
    </message>
    <message>
        <source>list: does not fit the lines into the terminal.</source>
        <translation>list: non adatta le righe al terminale.</translation>
    </message>
    <message>
        <source>Prints one JSON object.</source>
        <translation>Stampa un oggetto JSON.</translation>
    </message>
    <message>
        <source>All was shown.</source>
        <translation>Tutto è stato mostrato.</translation>
    </message>
    <message>
        <source>A folder or report cannot be read, a file in the folder is not a report, or addr2line failed; the rest was shown.</source>
        <translation>Una cartella o un rapporto non è leggibile, un file nella cartella non è un rapporto, o addr2line non è riuscito; il resto è stato mostrato.</translation>
    </message>
    <message>
        <source>Symbols of installed programs.</source>
        <translation>Simboli dei programmi installati.</translation>
    </message>
    <message>
        <source>Lists the reports of a machine.</source>
        <translation>Elenca i rapporti di una macchina.</translation>
    </message>
    <message>
        <source>Shows a report with the names of that version.</source>
        <translation>Mostra un rapporto con i nomi di quella versione.</translation>
    </message>
    <message>
        <source>cannot read %1: %2</source>
        <translation>impossibile leggere %1: %2</translation>
    </message>
    <message>
        <source>it is not a crash report</source>
        <translation>non è un rapporto di crash</translation>
    </message>
    <message>
        <source>it is a crash report of another version</source>
        <translation>è un rapporto di crash di un&apos;altra versione</translation>
    </message>
    <message>
        <source>incomplete</source>
        <translation>incompleto</translation>
    </message>
    <message>
        <source>the report is cut or damaged</source>
        <translation>il rapporto è tagliato o danneggiato</translation>
    </message>
    <message>
        <source>signal</source>
        <translation>segnale</translation>
    </message>
    <message>
        <source>reason</source>
        <translation>motivo</translation>
    </message>
    <message>
        <source>address</source>
        <translation>indirizzo</translation>
    </message>
    <message>
        <source>time</source>
        <translation>ora</translation>
    </message>
    <message>
        <source>running for</source>
        <translation>attivo per</translation>
    </message>
    <message>
        <source>started</source>
        <translation>avviato</translation>
    </message>
    <message>
        <source>program</source>
        <translation>programma</translation>
    </message>
    <message>
        <source>%1 (process %2)</source>
        <translation>%1 (processo %2)</translation>
    </message>
    <message>
        <source>application</source>
        <translation>applicazione</translation>
    </message>
    <message>
        <source>library</source>
        <translation>libreria</translation>
    </message>
    <message>
        <source>boot</source>
        <translation>avvio</translation>
    </message>
    <message>
        <source>thread %1 %2, crashed</source>
        <translation>thread %1 %2, in crash</translation>
    </message>
    <message>
        <source>thread %1 %2</source>
        <translation>thread %1 %2</translation>
    </message>
    <message>
        <source>no answer</source>
        <translation>nessuna risposta</translation>
    </message>
    <message>
        <source>inlined into %1</source>
        <translation>espanso in %1</translation>
    </message>
    <message>
        <source>last tick %1 ms before</source>
        <translation>ultimo segno di vita %1 ms prima</translation>
    </message>
    <message>
        <source>monitored threads</source>
        <translation>thread sorvegliati</translation>
    </message>
    <message>
        <source>last lines of the log</source>
        <translation>ultime righe del log</translation>
    </message>
    <message>
        <source>registers</source>
        <translation>registri</translation>
    </message>
    <message>
        <source>modules</source>
        <translation>moduli</translation>
    </message>
    <message>
        <source>--require is checksum or sha1</source>
        <translation>--require è checksum o sha1</translation>
    </message>
    <message>
        <source>--protection is off, checksum or sha1</source>
        <translation>--protection è off, checksum o sha1</translation>
    </message>
    <message>
        <source>--compression is smaller, forced or off</source>
        <translation>--compression è smaller, forced o off</translation>
    </message>
    <message>
        <source>--metadata takes ASCII only: anything else would be read back changed</source>
        <translation>--metadata accetta solo ASCII: ogni altra cosa verrebbe riletta alterata</translation>
    </message>
    <message>
        <source>Encrypts and decrypts files, and shows what their header says.

OUT appears when it is complete. Compression, a checksum and pipes need memory for several times the size of the file; all else is streamed. The key, 16 hexadecimal digits, comes from --key-file or from the environment variable ZEL_KEY.

The flags of a file are not protected: one that has lost them is decrypted without a check, into garbage, and the program says only that nothing was checked. --require refuses such a file.</source>
        <translation>Cifra e decifra file, e mostra che cosa dice la loro intestazione.

OUT appare quando è completo. La compressione, una somma di controllo e le pipe richiedono memoria per più volte la dimensione del file; tutto il resto è elaborato a flusso. La chiave, 16 cifre esadecimali, viene da --key-file o dalla variabile di ambiente ZEL_KEY.

I flag di un file non sono protetti: un file che li ha persi è decifrato senza verifica, in dati senza senso, e il programma dice solo che nulla è stato verificato. --require rifiuta un tale file.</translation>
    </message>
    <message>
        <source>Encrypts, and checks what it wrote by decrypting it.</source>
        <translation>Cifra, e verifica ciò che ha scritto decifrandolo.</translation>
    </message>
    <message>
        <source>Decrypts.</source>
        <translation>Decifra.</translation>
    </message>
    <message>
        <source>Shows version, flags, metadata, the number of bytes in front of the payload and where the digest is; needs no key.</source>
        <translation>Mostra versione, flag, metadati, il numero di byte prima del contenuto e dove si trova il digest; non richiede la chiave.</translation>
    </message>
    <message>
        <source>A file, or &quot;-&quot; for the standard input</source>
        <translation>Un file, o &quot;-&quot; per lo standard input</translation>
    </message>
    <message>
        <source>A file, or &quot;-&quot; for the standard output</source>
        <translation>Un file, o &quot;-&quot; per lo standard output</translation>
    </message>
    <message>
        <source>Reads the key from FILE.</source>
        <translation>Legge la chiave da FILE.</translation>
    </message>
    <message>
        <source>Puts a readable ASCII text into the header.</source>
        <translation>Mette un testo ASCII leggibile nell&apos;intestazione.</translation>
    </message>
    <message>
        <source>What a decryption checks; sha1 unless given.</source>
        <translation>Che cosa verifica la decifratura; sha1 se non indicato.</translation>
    </message>
    <message>
        <source>smaller compresses where it pays; off unless given.</source>
        <translation>smaller comprime dove conviene; off se non indicato.</translation>
    </message>
    <message>
        <source>Does not encipher.</source>
        <translation>Non cifra.</translation>
    </message>
    <message>
        <source>The same input gives the same output each time.</source>
        <translation>Lo stesso input dà ogni volta lo stesso output.</translation>
    </message>
    <message>
        <source>Does not stream.</source>
        <translation>Non elabora a flusso.</translation>
    </message>
    <message>
        <source>Decrypts only what is checked by this.</source>
        <translation>Decifra solo ciò che è verificato in questo modo.</translation>
    </message>
    <message>
        <source>Prints the info as one JSON object.</source>
        <translation>Stampa le informazioni come un oggetto JSON.</translation>
    </message>
    <message>
        <source>OUT is complete, or the header was shown.</source>
        <translation>OUT è completo, o l&apos;intestazione è stata mostrata.</translation>
    </message>
    <message>
        <source>There is no OUT: a file cannot be read or written, is damaged, or the key is missing or wrong.</source>
        <translation>Non c&apos;è OUT: un file non si può leggere o scrivere, è danneggiato, o la chiave manca o è errata.</translation>
    </message>
    <message>
        <source>Encrypts a file.</source>
        <translation>Cifra un file.</translation>
    </message>
    <message>
        <source>Shows what it is.</source>
        <translation>Mostra che cos&apos;è.</translation>
    </message>
    <message>
        <source>%1 is not a cyphertext</source>
        <translation>%1 non è un testo cifrato</translation>
    </message>
    <message>
        <source>the header of %1 is damaged</source>
        <translation>l&apos;intestazione di %1 è danneggiata</translation>
    </message>
    <message>
        <source>%1 bytes, too many to be shown</source>
        <translation>%1 byte, troppi per mostrarli</translation>
    </message>
    <message>
        <source>what was written does not decrypt to it</source>
        <translation>ciò che è stato scritto, decifrato, non lo restituisce</translation>
    </message>
    <message>
        <source>cannot encrypt %1: %2</source>
        <translation>impossibile cifrare %1: %2</translation>
    </message>
    <message>
        <source>cannot decrypt %1: %2</source>
        <translation>impossibile decifrare %1: %2</translation>
    </message>
    <message>
        <source>it is not a cyphertext</source>
        <translation>non è un testo cifrato</translation>
    </message>
    <message>
        <source>it is damaged, or the key is another one</source>
        <translation>è danneggiato, o la chiave è un&apos;altra</translation>
    </message>
    <message>
        <source>it has become shorter meanwhile</source>
        <translation>nel frattempo si è accorciato</translation>
    </message>
    <message>
        <source>cannot write %1: %2</source>
        <translation>impossibile scrivere %1: %2</translation>
    </message>
    <message>
        <source>it has no SHA-1 to check</source>
        <translation>non ha un SHA-1 da verificare</translation>
    </message>
    <message>
        <source>it has no checksum to check</source>
        <translation>non ha una somma di controllo da verificare</translation>
    </message>
    <message>
        <source>cannot check %1: %2</source>
        <translation>impossibile verificare %1: %2</translation>
    </message>
    <message>
        <source>encrypting</source>
        <translation>cifratura</translation>
    </message>
    <message>
        <source>decrypting</source>
        <translation>decifratura</translation>
    </message>
    <message>
        <source>writing %1 would lose the input or the key</source>
        <translation>scrivendo %1 si perderebbe l&apos;input o la chiave</translation>
    </message>
    <message>
        <source>Cannot allocate memory</source>
        <translation>La memoria non basta</translation>
    </message>
    <message>
        <source>%1 has no checksum and no SHA-1: nothing was checked</source>
        <translation>%1 non ha né somma di controllo né SHA-1: nulla è stato verificato</translation>
    </message>
    <message>
        <source>%1 holds no key of 16 hexadecimal digits</source>
        <translation>%1 non contiene una chiave di 16 cifre esadecimali</translation>
    </message>
    <message>
        <source>a key is missing: --key-file or the environment variable ZEL_KEY</source>
        <translation>manca una chiave: --key-file o la variabile di ambiente ZEL_KEY</translation>
    </message>
    <message>
        <source>the environment variable ZEL_KEY holds no key of 16 hexadecimal digits</source>
        <translation>la variabile di ambiente ZEL_KEY non contiene una chiave di 16 cifre esadecimali</translation>
    </message>
    <message>
        <source>%1 is not a switch, and not in %2</source>
        <translation>%1 non è un interruttore e non è in %2</translation>
    </message>
    <message>
        <source>%1 has no value</source>
        <translation>%1 non ha un valore</translation>
    </message>
    <message>
        <source>a line of the file cannot hold the name &quot;%1&quot;</source>
        <translation>una riga del file non può contenere il nome &quot;%1&quot;</translation>
    </message>
    <message>
        <source>%1 is not a switch; --force sets it anyway</source>
        <translation>%1 non è un interruttore; --force lo imposta comunque</translation>
    </message>
    <message>
        <source>a line of the file cannot hold the value &quot;%1&quot; of %2</source>
        <translation>una riga del file non può contenere il valore &quot;%1&quot; di %2</translation>
    </message>
    <message>
        <source>What the machine gets, and whether from the file, from the environment (here that of zelctl) or from the build (define). A value that the machine would refuse is marked as invalid.</source>
        <translation>Ciò che la macchina riceve, e se dal file, dall&apos;ambiente (qui quello di zelctl) o dalla build (define). Un valore che la macchina rifiuterebbe è segnato come invalid.</translation>
    </message>
    <message>
        <source>The value that the machine gets.</source>
        <translation>Il valore che la macchina riceve.</translation>
    </message>
    <message>
        <source>Changes one line of the file, or appends it; creates a missing file. After &quot;--&quot; a VALUE may begin with &quot;-&quot;.</source>
        <translation>Cambia una riga del file, o la aggiunge; crea un file mancante. Dopo &quot;--&quot; un VALUE può iniziare con &quot;-&quot;.</translation>
    </message>
    <message>
        <source>Removes the lines of that name.</source>
        <translation>Toglie le righe con quel nome.</translation>
    </message>
    <message>
        <source>All switches: name, type, category, flags (1 is visible, 2 and 4 are the application&apos;s), build default, description.</source>
        <translation>Tutti gli interruttori: nome, tipo, categoria, flag (1 è visibile, 2 e 4 sono dell&apos;applicazione), valore della build, descrizione.</translation>
    </message>
    <message>
        <source>The environment file</source>
        <translation>Il file di ambiente</translation>
    </message>
    <message>
        <source>The name of a switch</source>
        <translation>Il nome di un interruttore</translation>
    </message>
    <message>
        <source>Also sets a name that is not a known switch.</source>
        <translation>Imposta anche un nome che qui non è noto come interruttore.</translation>
    </message>
    <message>
        <source>Does not fit the list or the catalogue into the terminal.</source>
        <translation>Non adatta l&apos;elenco o il catalogo al terminale.</translation>
    </message>
    <message>
        <source>Prints the list, the value or the catalogue as one JSON object.</source>
        <translation>Stampa l&apos;elenco, il valore o il catalogo come un oggetto JSON.</translation>
    </message>
    <message>
        <source>The value was printed, or the file holds it.</source>
        <translation>Il valore è stato stampato, o il file lo contiene.</translation>
    </message>
    <message>
        <source>The file cannot be read or written, the name is unknown, or the machine would refuse a value.</source>
        <translation>Il file non si può leggere o scrivere, il nome è sconosciuto, o la macchina rifiuterebbe un valore.</translation>
    </message>
    <message>
        <source>Shows what a machine would get.</source>
        <translation>Mostra ciò che una macchina riceverebbe.</translation>
    </message>
    <message>
        <source>Sets a switch.</source>
        <translation>Imposta un interruttore.</translation>
    </message>
    <message>
        <source>the name is empty</source>
        <translation>il nome è vuoto</translation>
    </message>
    <message>
        <source>the environment: %1</source>
        <translation>l&apos;ambiente: %1</translation>
    </message>
    <message>
        <source>%1 holds no zel_events.log</source>
        <translation>%1 non contiene zel_events.log</translation>
    </message>
    <message>
        <source>there are event files in %1; give one of these folders</source>
        <translation>ci sono file di eventi in %1; indicare una di queste cartelle</translation>
    </message>
    <message>
        <source> and in </source>
        <translation> e in </translation>
    </message>
    <message>
        <source>the files in %1 grow faster than they can be read</source>
        <translation>i file in %1 crescono più in fretta di quanto si possano leggere</translation>
    </message>
    <message>
        <source>the files in %1 rotate faster than they can be read</source>
        <translation>i file in %1 ruotano più in fretta di quanto si possano leggere</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a date of the form %2</source>
        <translation>&quot;%1&quot; non è una data della forma %2</translation>
    </message>
    <message>
        <source>--from is after --to</source>
        <translation>--from è dopo --to</translation>
    </message>
    <message>
        <source>unknown kind &quot;%1&quot;; the kinds are %2</source>
        <translation>tipo &quot;%1&quot; sconosciuto; i tipi sono %2</translation>
    </message>
    <message>
        <source>--page needs a number from 0 on</source>
        <translation>--page richiede un numero da 0 in su</translation>
    </message>
    <message>
        <source>--per-page needs a number from 1 on</source>
        <translation>--per-page richiede un numero da 1 in su</translation>
    </message>
    <message>
        <source>page %1 of %2</source>
        <translation>pagina %1 di %2</translation>
    </message>
    <message>
        <source>there is no page %1; no event matches</source>
        <translation>non c&apos;è la pagina %1; nessun evento corrisponde</translation>
    </message>
    <message>
        <source>there is no page %1; the last one is %2</source>
        <translation>non c&apos;è la pagina %1; l&apos;ultima è %2</translation>
    </message>
    <message>
        <source>%1; events are missing</source>
        <translation>%1; mancano eventi</translation>
    </message>
    <message>
        <source>Prints the events in DIR/zel_events.log.1 and DIR/zel_events.log, oldest first, a page at a time.</source>
        <translation>Stampa gli eventi in DIR/zel_events.log.1 e DIR/zel_events.log, prima i meno recenti, una pagina alla volta.</translation>
    </message>
    <message>
        <source>The folder of the event files, or one above it</source>
        <translation>La cartella dei file di eventi, o una superiore</translation>
    </message>
    <message>
        <source>A kind of events</source>
        <translation>Un tipo di eventi</translation>
    </message>
    <message>
        <source>Only events of these kinds, separated by commas; may be given several times.</source>
        <translation>Solo gli eventi di questi tipi, separati da virgole; si può ripetere.</translation>
    </message>
    <message>
        <source>Only events of this day and later.</source>
        <translation>Solo eventi da questo giorno in poi.</translation>
    </message>
    <message>
        <source>Only events of this day and earlier.</source>
        <translation>Solo eventi fino a questo giorno.</translation>
    </message>
    <message>
        <source>Which page; 0, the default, has the newest events.</source>
        <translation>Quale pagina; 0, il valore predefinito, ha gli eventi più recenti.</translation>
    </message>
    <message>
        <source>How many events make a page; 20 by default.</source>
        <translation>Quanti eventi formano una pagina; 20 se non indicato.</translation>
    </message>
    <message>
        <source>Prints one JSON object with all events of the page.</source>
        <translation>Stampa un oggetto JSON con tutti gli eventi della pagina.</translation>
    </message>
    <message>
        <source>Continues with new events after the page, until interrupted; with --json one object for each.</source>
        <translation>Prosegue dopo la pagina con i nuovi eventi, fino all&apos;interruzione; con --json un oggetto per ciascuno.</translation>
    </message>
    <message>
        <source>The page was printed.</source>
        <translation>La pagina è stata stampata.</translation>
    </message>
    <message>
        <source>There is no such folder or page, or a file could not be read to its end; the other events are printed.</source>
        <translation>Non c&apos;è una tale cartella o pagina, o un file non si è potuto leggere fino alla fine; gli altri eventi sono stampati.</translation>
    </message>
    <message>
        <source>The events of a machine.</source>
        <translation>Gli eventi di una macchina.</translation>
    </message>
    <message>
        <source>Shows who entered the menu in these days.</source>
        <translation>Mostra chi è entrato nel menu in questi giorni.</translation>
    </message>
    <message>
        <source>Lists the commands.</source>
        <translation>Elenca i comandi.</translation>
    </message>
    <message>
        <source>Prints the version.</source>
        <translation>Indica la versione.</translation>
    </message>
    <message>
        <source>no folder %1</source>
        <translation>non c&apos;è la cartella %1</translation>
    </message>
    <message>
        <source>%1 is a file; give its folder, which is %2</source>
        <translation>%1 è un file; indicare la sua cartella, che è %2</translation>
    </message>
    <message>
        <source>cannot read the folder %1</source>
        <translation>impossibile leggere la cartella %1</translation>
    </message>
    <message>
        <source>%1 is a folder; give the name of a file in it</source>
        <translation>%1 è una cartella; indicare il nome di un file in essa</translation>
    </message>
    <message>
        <source>Explains a command as its option --help does, or lists all commands.</source>
        <translation>Spiega un comando come la sua opzione --help, o elenca tutti i comandi.</translation>
    </message>
    <message>
        <source>The command</source>
        <translation>Il comando</translation>
    </message>
    <message>
        <source>Writes the man pages of all commands into DIR.</source>
        <translation>Scrive in DIR le pagine di manuale di tutti i comandi.</translation>
    </message>
    <message>
        <source>The help was printed, or written.</source>
        <translation>L&apos;aiuto è stato stampato, o scritto.</translation>
    </message>
    <message>
        <source>The help could not be written.</source>
        <translation>Non è stato possibile scrivere l&apos;aiuto.</translation>
    </message>
    <message>
        <source>The date of the man pages, in seconds since 1970; today if it is not set.</source>
        <translation>La data delle pagine di manuale, in secondi dal 1970; oggi se non è impostata.</translation>
    </message>
    <message>
        <source>Explains a command of two words.</source>
        <translation>Spiega un comando di due parole.</translation>
    </message>
    <message>
        <source>there is no command &quot;%1&quot;; &quot;zelctl help&quot; lists the commands</source>
        <translation>non esiste il comando &quot;%1&quot;; &quot;zelctl help&quot; elenca i comandi</translation>
    </message>
    <message>
        <source>line %1: %2</source>
        <translation>riga %1: %2</translation>
    </message>
    <message>
        <source>Prints hexadecimal text in one form, or the bytes that it means, or the text for bytes. The text may have letters of either case, &quot;-&quot;, &quot;:&quot; and 0x anywhere; white space is allowed at its ends.</source>
        <translation>Stampa un testo esadecimale in una forma unica, o i byte che esso significa, o il testo per dei byte. Il testo può avere lettere maiuscole e minuscole, e ovunque &quot;-&quot;, &quot;:&quot; e 0x; gli spazi sono ammessi alle estremità.</translation>
    </message>
    <message>
        <source>The text. &quot;-&quot; is the standard input: each line is a text of its own, blank ones stay blank</source>
        <translation>Il testo. &quot;-&quot; è lo standard input: ogni riga è un testo a sé, quelle vuote restano vuote</translation>
    </message>
    <message>
        <source>Begins each text with PREFIX, as it is.</source>
        <translation>Inizia ogni testo con PREFIX, così com&apos;è.</translation>
    </message>
    <message>
        <source>Puts SEPARATOR, converted to upper case, between the bytes; &quot;-&quot; unless given.</source>
        <translation>Separa i byte con SEPARATOR, in maiuscolo; &quot;-&quot; se non indicato.</translation>
    </message>
    <message>
        <source>Takes TEXT, or the standard input as a whole, for the bytes themselves.</source>
        <translation>Prende TEXT, o lo standard input intero, per i byte stessi.</translation>
    </message>
    <message>
        <source>Prints the bytes of all texts, one after the other.</source>
        <translation>Stampa i byte di tutti i testi, uno dopo l&apos;altro.</translation>
    </message>
    <message>
        <source>Prints one JSON object for each text.</source>
        <translation>Stampa un oggetto JSON per ogni testo.</translation>
    </message>
    <message>
        <source>All texts were converted.</source>
        <translation>Tutti i testi sono stati convertiti.</translation>
    </message>
    <message>
        <source>A text is not hexadecimal, or the input is too large.</source>
        <translation>Un testo non è esadecimale, o l&apos;input è troppo grande.</translation>
    </message>
    <message>
        <source>Prints 0xDE-AD-BE-EF.</source>
        <translation>Stampa 0xDE-AD-BE-EF.</translation>
    </message>
    <message>
        <source>Prints the bytes of a file.</source>
        <translation>Stampa i byte di un file.</translation>
    </message>
    <message>
        <source>Writes HI, without a line feed.</source>
        <translation>Scrive HI, senza avanzamento di riga.</translation>
    </message>
    <message>
        <source>--to-bytes cannot be combined with other options</source>
        <translation>--to-bytes non va con altre opzioni</translation>
    </message>
    <message>
        <source>bytes are not written to a terminal; redirect the output</source>
        <translation>i byte potrebbero comandare il terminale, inviarli a un file</translation>
    </message>
    <message>
        <source>the text for so many bytes does not fit into the memory</source>
        <translation>il testo per così tanti byte non entra nella memoria</translation>
    </message>
    <message>
        <source>the kernel log has ended</source>
        <translation>il log del kernel è terminato</translation>
    </message>
    <message>
        <source>1 record was overwritten before it was read</source>
        <translation>1 voce è stata sovrascritta prima di essere letta</translation>
    </message>
    <message numerus="yes">
        <source>%n records were overwritten before they were read</source>
        <translation>
            <numerusform>%n voce è stata sovrascritta prima di essere letta</numerusform>
            <numerusform>%n voci sono state sovrascritte prima di essere lette</numerusform>
        </translation>
    </message>
    <message>
        <source>the kernel log has no end</source>
        <translation>il log del kernel non ha fine</translation>
    </message>
    <message>
        <source>Prints the log of the running kernel with time, level and facility.</source>
        <translation>Stampa il log del kernel in esecuzione con ora, livello e facility.</translation>
    </message>
    <message>
        <source>A level</source>
        <translation>Un livello</translation>
    </message>
    <message>
        <source>Facilities</source>
        <translation>Facility</translation>
    </message>
    <message>
        <source>Only this level and more severe ones.</source>
        <translation>Solo questo livello e quelli più gravi.</translation>
    </message>
    <message>
        <source>Only these facilities, separated by commas; may be given several times.</source>
        <translation>Solo queste facility, separate da virgole; si può indicare più volte.</translation>
    </message>
    <message>
        <source>Continues with new records, until interrupted.</source>
        <translation>Prosegue con le nuove voci, fino all&apos;interruzione.</translation>
    </message>
    <message>
        <source>Prints one JSON object for each record.</source>
        <translation>Stampa un oggetto JSON per ogni voce.</translation>
    </message>
    <message>
        <source>The records were printed.</source>
        <translation>Le voci sono state stampate.</translation>
    </message>
    <message>
        <source>The log cannot be read; the kernel may show it to root only.</source>
        <translation>Il log non è leggibile; il kernel può mostrarlo solo a root.</translation>
    </message>
    <message>
        <source>The log of the kernel.</source>
        <translation>Il log del kernel.</translation>
    </message>
    <message>
        <source>Follows what the kernel warns of.</source>
        <translation>Segue gli avvisi del kernel.</translation>
    </message>
    <message>
        <source>unknown level &quot;%1&quot;; the levels are %2</source>
        <translation>livello &quot;%1&quot; sconosciuto; i livelli sono %2</translation>
    </message>
    <message>
        <source>unknown facility &quot;%1&quot;; the facilities are %2</source>
        <translation>facility &quot;%1&quot; sconosciuta; le facility sono %2</translation>
    </message>
    <message>
        <source>tar cannot be started</source>
        <translation>impossibile avviare tar</translation>
    </message>
    <message>
        <source>tar finds it damaged</source>
        <translation>tar lo trova danneggiato</translation>
    </message>
    <message>
        <source>the machine lost 1 line in this period</source>
        <translation>la macchina ha perso 1 riga in questo periodo</translation>
    </message>
    <message numerus="yes">
        <source>the machine lost %n lines in this period</source>
        <translation>
            <numerusform>la macchina ha perso %n riga in questo periodo</numerusform>
            <numerusform>la macchina ha perso %n righe in questo periodo</numerusform>
        </translation>
    </message>
    <message>
        <source>%1; lines are missing</source>
        <translation>%1; mancano righe</translation>
    </message>
    <message>
        <source>%1 rotates faster than it can be read</source>
        <translation>%1 ruota più in fretta di quanto si possa leggere</translation>
    </message>
    <message>
        <source>lines do not name their module; &quot;%1&quot; is neither a file (%2) nor a kind of events (%3)</source>
        <translation>le righe non indicano il loro modulo; &quot;%1&quot; non è né un file (%2) né un tipo di eventi (%3)</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a time of the form dd/MM/yyyy or dd/MM/yyyy hh:mm or dd/MM/yyyy hh:mm:ss</source>
        <translation>&quot;%1&quot; non è un&apos;ora della forma dd/MM/yyyy o dd/MM/yyyy hh:mm o dd/MM/yyyy hh:mm:ss</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a regular expression: %2</source>
        <translation>&quot;%1&quot; non è un&apos;espressione regolare: %2</translation>
    </message>
    <message>
        <source>--last needs a number from 0 on</source>
        <translation>--last richiede un numero da 0 in su</translation>
    </message>
    <message>
        <source>--color is auto, always or never</source>
        <translation>--color è auto, always o never</translation>
    </message>
    <message>
        <source>Prints the log files in DIR, with their predecessors, merged by time. DIR has the files, or the folders debug and events, or logs with these two.

A line that names no level counts as Event in the event files, and as Info in others. Lines do not name their module.</source>
        <translation>Stampa i file di log in DIR, con i loro predecessori, uniti in ordine di tempo. DIR ha i file, o le cartelle debug ed events, o logs con queste due.

Una riga senza livello vale come Event nei file di eventi, e come Info negli altri. Le righe non indicano il loro modulo.</translation>
    </message>
    <message>
        <source>Writes the lines that killed processes have left; &quot;zelctl help log recover&quot; explains it.</source>
        <translation>Scrive le righe lasciate dai processi terminati; &quot;zelctl help log recover&quot; lo spiega.</translation>
    </message>
    <message>
        <source>The folder of the log files</source>
        <translation>La cartella dei file di log</translation>
    </message>
    <message>
        <source>A file, or a kind of events</source>
        <translation>Un file, o un tipo di eventi</translation>
    </message>
    <message>
        <source>Only lines of this level and more severe ones.</source>
        <translation>Solo righe di questo livello e di quelli più gravi.</translation>
    </message>
    <message>
        <source>Only lines of these files or kinds of events, separated by commas; may be given several times.</source>
        <translation>Solo righe di questi file o tipi di eventi, separati da virgole; si può ripetere.</translation>
    </message>
    <message>
        <source>Only lines that contain this regular expression.</source>
        <translation>Solo righe che contengono questa espressione regolare.</translation>
    </message>
    <message>
        <source>Only lines of this time and later.</source>
        <translation>Solo righe da quest&apos;ora in poi.</translation>
    </message>
    <message>
        <source>Only lines of this time and earlier, up to the end of this day, minute or second.</source>
        <translation>Solo righe fino a quest&apos;ora, compresi questo giorno, minuto o secondo.</translation>
    </message>
    <message>
        <source>Only the last N of these lines.</source>
        <translation>Solo le ultime N di queste righe.</translation>
    </message>
    <message>
        <source>Continues with new lines, also after a rotation, until interrupted.</source>
        <translation>Prosegue con le nuove righe, anche dopo una rotazione, fino all&apos;interruzione.</translation>
    </message>
    <message>
        <source>Prints one JSON object for each line.</source>
        <translation>Stampa un oggetto JSON per riga.</translation>
    </message>
    <message>
        <source>Colours the lines by their levels; auto unless given.</source>
        <translation>Colora le righe secondo il loro livello; auto se non indicato.</translation>
    </message>
    <message>
        <source>The lines were printed.</source>
        <translation>Le righe sono state stampate.</translation>
    </message>
    <message>
        <source>There are no log files, or one could not be read to its end; the other lines are printed.</source>
        <translation>Non ci sono file di log, o uno non si è potuto leggere fino alla fine; le altre righe sono stampate.</translation>
    </message>
    <message>
        <source>The program that shows the lines on a terminal; empty for none, less if it is not set.</source>
        <translation>Il programma che mostra le righe su un terminale; vuoto per nessuno, less se non è impostato.</translation>
    </message>
    <message>
        <source>Turns off the colours of --color auto.</source>
        <translation>Disattiva i colori di --color auto.</translation>
    </message>
    <message>
        <source>Turns them off, too, if it is dumb.</source>
        <translation>Li disattiva anch&apos;esso, se è dumb.</translation>
    </message>
    <message>
        <source>Shows what went wrong since three o&apos;clock.</source>
        <translation>Mostra che cosa è andato storto dalle tre.</translation>
    </message>
    <message>
        <source>Follows what the log says of the coin changer.</source>
        <translation>Segue ciò che il log dice della gettoniera.</translation>
    </message>
    <message>
        <source>a command is missing; &quot;zelctl --help&quot; lists the commands</source>
        <translation>manca un comando; &quot;zelctl --help&quot; elenca i comandi</translation>
    </message>
    <message>
        <source>unknown command &quot;%1&quot;; &quot;zelctl --help&quot; lists the commands</source>
        <translation>comando &quot;%1&quot; sconosciuto; &quot;zelctl --help&quot; elenca i comandi</translation>
    </message>
    <message>
        <source>SYNOPSIS</source>
        <translation>SINTASSI</translation>
    </message>
    <message>
        <source>DESCRIPTION</source>
        <translation>DESCRIZIONE</translation>
    </message>
    <message>
        <source>zelctl works with the files of a machine that uses the library ZelTools: its logs, reports, switches and encrypted files; and with the simulators beside it. Each command has a page of its own.</source>
        <translation>zelctl lavora con i file di una macchina che usa la libreria ZelTools: log, rapporti, interruttori e file cifrati; e con i simulatori accanto ad essa. Ogni comando ha una pagina propria.</translation>
    </message>
    <message>
        <source>OPTIONS</source>
        <translation>OPZIONI</translation>
    </message>
    <message>
        <source>EXIT STATUS</source>
        <translation>STATO DI USCITA</translation>
    </message>
    <message>
        <source>Companion of the library ZelTools.</source>
        <translation>Programma di accompagnamento della libreria ZelTools.</translation>
    </message>
    <message>
        <source>SEE ALSO</source>
        <translation>VEDERE ANCHE</translation>
    </message>
    <message>
        <source>ENVIRONMENT</source>
        <translation>AMBIENTE</translation>
    </message>
    <message>
        <source>FILES</source>
        <translation>FILE</translation>
    </message>
    <message>
        <source>EXAMPLES</source>
        <translation>ESEMPI</translation>
    </message>
    <message>
        <source>it is too large</source>
        <translation>è troppo grande</translation>
    </message>
    <message>
        <source>it is a folder, not a file</source>
        <translation>è una cartella, non un file</translation>
    </message>
    <message>
        <source>it is not a file</source>
        <translation>non è un file</translation>
    </message>
    <message>
        <source>the standard input</source>
        <translation>lo standard input</translation>
    </message>
    <message>
        <source>Writes to the log files below DIR what killed processes with buffered logging have left in their rings. The next start of the application does the same. Lines without a file go to stderr.</source>
        <translation>Scrive nei file di log sotto DIR ciò che i processi terminati con log bufferizzato hanno lasciato nei loro buffer circolari. Il prossimo avvio dell&apos;applicazione fa lo stesso. Le righe senza file vanno su stderr.</translation>
    </message>
    <message>
        <source>Looks for rings in FOLDER, too; may be given several times.</source>
        <translation>Cerca buffer circolari anche in FOLDER; si può indicare più volte.</translation>
    </message>
    <message>
        <source>Prints one JSON object with the number of lines.</source>
        <translation>Stampa un oggetto JSON con il numero di righe.</translation>
    </message>
    <message>
        <source>The lines were written.</source>
        <translation>Le righe sono state scritte.</translation>
    </message>
    <message>
        <source>There is no such folder, or a ring or a log file has a problem.</source>
        <translation>Non c&apos;è una tale cartella, o un buffer circolare o un file di log ha un problema.</translation>
    </message>
    <message>
        <source>Recovers the lines of a machine.</source>
        <translation>Recupera le righe di una macchina.</translation>
    </message>
    <message>
        <source>1 line recovered</source>
        <translation>1 riga recuperata</translation>
    </message>
    <message numerus="yes">
        <source>%n lines recovered</source>
        <translation>
            <numerusform>%n riga recuperata</numerusform>
            <numerusform>%n righe recuperate</numerusform>
        </translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a value for %2, which is 0 or 1</source>
        <translation>&quot;%1&quot; non è un valore per %2, che è 0 o 1</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a value for %2, which is of type %3</source>
        <translation>&quot;%1&quot; non è un valore per %2, che è di tipo %3</translation>
    </message>
    <message>
        <source>the machine reads in the order of the names and stops before %1: %2</source>
        <translation>la macchina legge nell&apos;ordine dei nomi e si ferma prima di %1: %2</translation>
    </message>
    <message>
        <source>--%1 is only valid with %2</source>
        <translation>--%1 va con %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not the address of a link</source>
        <translation>&quot;%1&quot; non è l&apos;indirizzo di un collegamento</translation>
    </message>
    <message>
        <source>--as is simulator or machine</source>
        <translation>--as è simulator o machine</translation>
    </message>
    <message>
        <source>--timeout is a time such as 1.5s or 2min</source>
        <translation>--timeout è un tempo come 1.5s o 2min</translation>
    </message>
    <message>
        <source>Plays the simulator&apos;s end of a link to a machine, and records and replays links.</source>
        <translation>Fa da lato simulatore di un collegamento con una macchina, e registra e riproduce collegamenti.</translation>
    </message>
    <message>
        <source>Answers a machine as the rows of a script say; ADDRESS is tcpserver/127.0.0.1/0 unless given.</source>
        <translation>Risponde a una macchina secondo le righe di uno script; ADDRESS è tcpserver/127.0.0.1/0 se non indicato.</translation>
    </message>
    <message>
        <source>Stands between a machine and the simulator at ADDRESS, and records both ways with times. FILE is emptied first.</source>
        <translation>Sta tra una macchina e il simulatore all&apos;indirizzo ADDRESS, e registra entrambi i versi con i tempi. FILE viene prima svuotato.</translation>
    </message>
    <message>
        <source>Plays one side of a recording, and reports the first difference of what the other side does.</source>
        <translation>Riproduce un lato di una registrazione, e segnala la prima differenza in ciò che fa l&apos;altro lato.</translation>
    </message>
    <message>
        <source>The script of a simulator</source>
        <translation>Lo script di un simulatore</translation>
    </message>
    <message>
        <source>The recording</source>
        <translation>La registrazione</translation>
    </message>
    <message>
        <source>tcpserver/IP/PORT or unixserver/PATH to listen, tcpclient/IP/PORT or unixclient/PATH to connect. A port 0 lets the system choose; the real one is printed</source>
        <translation>tcpserver/IP/PORT o unixserver/PATH per l&apos;ascolto, tcpclient/IP/PORT o unixclient/PATH per la connessione. Con la porta 0 sceglie il sistema; quella reale viene stampata</translation>
    </message>
    <message>
        <source>serve: ends after the first connection; otherwise it serves until interrupted.</source>
        <translation>serve: termina dopo la prima connessione; altrimenti serve fino all&apos;interruzione.</translation>
    </message>
    <message>
        <source>record: where the machine is, or where it connects; tcpserver/127.0.0.1/0 unless given.</source>
        <translation>record: dove si trova la macchina, o dove si connette; tcpserver/127.0.0.1/0 se non indicato.</translation>
    </message>
    <message>
        <source>replay: the side to play; simulator unless given.</source>
        <translation>replay: il lato da riprodurre; simulator se non indicato.</translation>
    </message>
    <message>
        <source>replay: sends at the recorded times; otherwise as soon as it can.</source>
        <translation>replay: invia ai tempi registrati; altrimenti appena può.</translation>
    </message>
    <message>
        <source>replay: how much later than recorded the other side may act, such as 1.5s or 2min; 10s unless given.</source>
        <translation>replay: con quanto ritardo rispetto alla registrazione può agire l&apos;altro lato, come 1.5s o 2min; 10s se non indicato.</translation>
    </message>
    <message>
        <source>Prints the address as a JSON object.</source>
        <translation>Stampa l&apos;indirizzo come oggetto JSON.</translation>
    </message>
    <message>
        <source>serve or record has ended without a problem, or a replay saw no difference.</source>
        <translation>serve o record è terminato senza problemi, o una riproduzione non ha trovato differenze.</translation>
    </message>
    <message>
        <source>A file or an address cannot be used, or a replay saw a difference or was interrupted.</source>
        <translation>Un file o un indirizzo non è utilizzabile, o una riproduzione ha trovato una differenza o è stata interrotta.</translation>
    </message>
    <message>
        <source>Plays a grinder.</source>
        <translation>Fa da macinacaffè.</translation>
    </message>
    <message>
        <source>Plays what a simulator did.</source>
        <translation>Riproduce ciò che ha fatto un simulatore.</translation>
    </message>
    <message>
        <source>the replay was stopped</source>
        <translation>la riproduzione è stata interrotta</translation>
    </message>
    <message>
        <source>the command was interrupted</source>
        <translation>il comando è stato interrotto</translation>
    </message>
    <message>
        <source>cannot listen on %1: %2</source>
        <translation>impossibile mettersi in ascolto su %1: %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; in &quot;%2&quot; is not a number of a version</source>
        <translation>&quot;%1&quot; in &quot;%2&quot; non è un numero di una versione</translation>
    </message>
    <message>
        <source>%1 and %2 have different numbers of parts, which the machine warns of; only those that both have decide between &lt; and &gt;</source>
        <translation>%1 e %2 hanno un numero diverso di parti, cosa di cui la macchina avverte; solo quelle comuni decidono tra &lt; e &gt;</translation>
    </message>
    <message>
        <source>Compares two versions, such as 2.9 and 2.10, as the machine does: prints &lt;, = or &gt; as A is to B. For versions of which one begins with the other (1.2 and 1.2.7) the machine says yes to none of these; that is printed as != and explained on stderr.

With one version it prints that in its usual form, with none the version of the library.</source>
        <translation>Confronta due versioni, come 2.9 e 2.10, come fa la macchina: stampa &lt;, = o &gt; per il rapporto di A con B. Per versioni di cui una inizia con l&apos;altra (1.2 e 1.2.7) la macchina non dice sì a nessuno di questi; ciò è stampato come != e spiegato su stderr.

Con una versione stampa quella nella sua forma consueta, senza versioni quella della libreria.</translation>
    </message>
    <message>
        <source>A version</source>
        <translation>Una versione</translation>
    </message>
    <message>
        <source>Another version</source>
        <translation>Un&apos;altra versione</translation>
    </message>
    <message>
        <source>The versions were compared, or the version was printed.</source>
        <translation>Le versioni sono state confrontate, o la versione è stata stampata.</translation>
    </message>
    <message>
        <source>A text is not a version.</source>
        <translation>Un testo non è una versione.</translation>
    </message>
    <message>
        <source>Prints &lt;.</source>
        <translation>Stampa &lt;.</translation>
    </message>
</context>
</TS>
