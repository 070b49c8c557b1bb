<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="it" sourcelanguage="en">
<context>
    <name>BundlePlaces</name>
    <message>
        <source>Folder of the application</source>
        <translation>Cartella dell&apos;applicazione</translation>
    </message>
    <message>
        <source>%1 free of %2</source>
        <translation>%1 liberi su %2</translation>
    </message>
    <message>
        <source>Write-protected</source>
        <translation>Protetta da scrittura</translation>
    </message>
    <message>
        <source>No stick</source>
        <translation>Nessuna chiavetta</translation>
    </message>
    <message>
        <source>Plug in a USB stick. It appears here when the system has mounted it below /media, /run/media or /mnt.</source>
        <translation>Inserire una chiavetta USB. Compare qui appena il sistema l&apos;ha montata sotto /media, /run/media o /mnt.</translation>
    </message>
</context>
<context>
    <name>BundleProgress</name>
    <message>
        <source>The bundle is complete.</source>
        <translation>Il pacchetto è completo.</translation>
    </message>
    <message>
        <source>Cancelled. No file was left.</source>
        <translation>Annullato. Nessun file è rimasto.</translation>
    </message>
    <message>
        <source>One file for the factory: log files, events, the kernel log, crash reports, switches without their secrets, versions, and the state of disks and memory.</source>
        <translation>Un unico file per la fabbrica: log, eventi, log del kernel, rapporti di crash, opzioni senza i dati segreti, versioni e stato di dischi e memoria.</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%1 %</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annulla</translation>
    </message>
    <message>
        <source>Create the bundle</source>
        <translation>Crea il pacchetto</translation>
    </message>
</context>
<context>
    <name>Catalogue</name>
    <message>
        <source>Overview</source>
        <extracomment>The names of pages stand below icons, too, where about ten letters have room.</extracomment>
        <translation>Riepilogo</translation>
    </message>
    <message>
        <source>Events</source>
        <translation>Eventi</translation>
    </message>
    <message>
        <source>Log</source>
        <translation>Log</translation>
    </message>
    <message>
        <source>Switches</source>
        <translation>Opzioni</translation>
    </message>
    <message>
        <source>Machine</source>
        <translation>Macchina</translation>
    </message>
    <message>
        <source>Threads</source>
        <translation>Thread</translation>
    </message>
    <message>
        <source>Kernel</source>
        <translation>Kernel</translation>
    </message>
    <message>
        <source>Files</source>
        <translation>File</translation>
    </message>
    <message>
        <source>Date and time</source>
        <translation>Data e ora</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Ora</translation>
    </message>
    <message>
        <source>Support</source>
        <translation>Assistenza</translation>
    </message>
</context>
<context>
    <name>ClockSetting</name>
    <message>
        <source>The clock is set.</source>
        <translation>L&apos;orologio è impostato.</translation>
    </message>
    <message>
        <source>Day</source>
        <translation>Giorno</translation>
    </message>
    <message>
        <source>Month</source>
        <translation>Mese</translation>
    </message>
    <message>
        <source>Year</source>
        <translation>Anno</translation>
    </message>
    <message>
        <source>Hour</source>
        <translation>Ora</translation>
    </message>
    <message>
        <source>Minute</source>
        <translation>Minuto</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Ripristina</translation>
    </message>
    <message>
        <source>Set the clock</source>
        <translation>Imposta l&apos;orologio</translation>
    </message>
</context>
<context>
    <name>CrashRows</name>
    <message>
        <source>No crash</source>
        <translation>Nessun crash</translation>
    </message>
    <message>
        <source>The folder has no crash report.</source>
        <translation>La cartella non contiene rapporti di crash.</translation>
    </message>
    <message>
        <source>The application has not called CrashReports::install().</source>
        <translation>L&apos;applicazione non ha chiamato CrashReports::install().</translation>
    </message>
    <message>
        <source>Crash reports are off</source>
        <translation>I rapporti di crash sono disattivati</translation>
    </message>
</context>
<context>
    <name>DaysDialog</name>
    <message>
        <source>All days</source>
        <translation>Tutti i giorni</translation>
    </message>
    <message>
        <source>Today</source>
        <translation>Oggi</translation>
    </message>
    <message>
        <source>Previous month</source>
        <translation>Mese precedente</translation>
    </message>
    <message>
        <source>Next month</source>
        <translation>Mese successivo</translation>
    </message>
    <message numerus="yes">
        <source>Last %n day(s)</source>
        <translation>
            <numerusform>Ultimo giorno</numerusform>
            <numerusform>Ultimi %n giorni</numerusform>
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
        <translation>Annulla</translation>
    </message>
</context>
<context>
    <name>EventKinds</name>
    <message>
        <source>Other</source>
        <translation>Altro</translation>
    </message>
    <message>
        <source>Menu access</source>
        <translation>Accesso al menu</translation>
    </message>
    <message>
        <source>Menu parameter</source>
        <translation>Parametro del menu</translation>
    </message>
    <message>
        <source>Cleaning</source>
        <translation>Pulizia</translation>
    </message>
    <message>
        <source>Dispensed drink</source>
        <translation>Bevanda erogata</translation>
    </message>
    <message>
        <source>Database error</source>
        <translation>Errore del database</translation>
    </message>
    <message>
        <source>CPU fan</source>
        <translation>Ventola CPU</translation>
    </message>
    <message>
        <source>Update</source>
        <translation>Aggiornamento</translation>
    </message>
    <message>
        <source>Configuration</source>
        <translation>Configurazione</translation>
    </message>
    <message>
        <source>Application start</source>
        <translation>Avvio dell&apos;applicazione</translation>
    </message>
    <message>
        <source>Ingredient level</source>
        <translation>Livello ingredienti</translation>
    </message>
    <message>
        <source>Waste level</source>
        <translation>Livello scarti</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>Avviso</translation>
    </message>
    <message>
        <source>Energy saving</source>
        <translation>Risparmio energetico</translation>
    </message>
    <message>
        <source>All events</source>
        <translation>Tutti gli eventi</translation>
    </message>
</context>
<context>
    <name>EventsPage</name>
    <message>
        <source>Events</source>
        <translation>Eventi</translation>
    </message>
    <message>
        <source>All days</source>
        <translation>Tutti i giorni</translation>
    </message>
    <message>
        <source>No events</source>
        <translation>Nessun evento</translation>
    </message>
    <message>
        <source>The machine has not logged an event yet.</source>
        <translation>La macchina non ha ancora registrato eventi.</translation>
    </message>
    <message>
        <source>No event matches the filters above. Choose another kind or more days.</source>
        <translation>Nessun evento corrisponde ai filtri in alto. Scegliere un altro tipo o più giorni.</translation>
    </message>
</context>
<context>
    <name>FileParts</name>
    <message>
        <source>Earlier</source>
        <translation>Indietro</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 di %2</translation>
    </message>
    <message>
        <source>Later</source>
        <translation>Avanti</translation>
    </message>
    <message>
        <source>End of the file</source>
        <translation>Fine del file</translation>
    </message>
</context>
<context>
    <name>FileText</name>
    <message>
        <source>%1 is deleted.</source>
        <translation>%1 è stato eliminato.</translation>
    </message>
    <message>
        <source>Delete this file?</source>
        <translation>Eliminare questo file?</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Elimina</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Indietro</translation>
    </message>
    <message>
        <source>Choose a file</source>
        <translation>Scegliere un file</translation>
    </message>
    <message>
        <source>This file is not text</source>
        <translation>Questo file non è un testo</translation>
    </message>
    <message>
        <source>The file cannot be read</source>
        <translation>Impossibile leggere il file</translation>
    </message>
</context>
<context>
    <name>FilesPage</name>
    <message>
        <source>Files</source>
        <translation>File</translation>
    </message>
    <message>
        <source>Crash reports</source>
        <translation>Rapporti di crash</translation>
    </message>
</context>
<context>
    <name>FolderRows</name>
    <message>
        <source>The folder is empty</source>
        <translation>La cartella è vuota</translation>
    </message>
    <message>
        <source>The folder cannot be read</source>
        <translation>Impossibile leggere la cartella</translation>
    </message>
    <message>
        <source>There is no folder to show</source>
        <translation>Nessuna cartella da mostrare</translation>
    </message>
    <message>
        <source>It was deleted or unplugged, or the application may not read it. Its files appear when it is back.</source>
        <translation>È stata eliminata o scollegata, oppure l&apos;applicazione non può leggerla. I file compaiono quando ritorna.</translation>
    </message>
    <message>
        <source>The application names the folders of this page by the property folders of Service.</source>
        <translation>L&apos;applicazione indica le cartelle di questa pagina con la proprietà folders di Service.</translation>
    </message>
</context>
<context>
    <name>FollowList</name>
    <message>
        <source>Newest line</source>
        <translation>Ultima riga</translation>
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
        <translation>Acquisizione in corso</translation>
    </message>
    <message>
        <source>Not capturing</source>
        <translation>Nessuna acquisizione</translation>
    </message>
    <message>
        <source>The machine lets only its administrator read the kernel log (kernel.dmesg_restrict is 1).</source>
        <translation>Solo l&apos;amministratore della macchina può leggere il log del kernel (kernel.dmesg_restrict è 1).</translation>
    </message>
    <message>
        <source>No lines</source>
        <translation>Nessuna riga</translation>
    </message>
    <message>
        <source>The kernel log is not captured</source>
        <translation>Il log del kernel non viene acquisito</translation>
    </message>
    <message>
        <source>No line contains the text above.</source>
        <translation>Nessuna riga contiene il testo in alto.</translation>
    </message>
    <message>
        <source>The kernel has not written a line yet.</source>
        <translation>Il kernel non ha ancora scritto righe.</translation>
    </message>
    <message>
        <source>The application starts the capture with Dmesg::start(). A desktop build never captures.</source>
        <translation>L&apos;applicazione avvia l&apos;acquisizione con Dmesg::start(). Una build desktop non acquisisce mai.</translation>
    </message>
</context>
<context>
    <name>LineDialog</name>
    <message>
        <source>Close</source>
        <translation>Chiudi</translation>
    </message>
</context>
<context>
    <name>LogFiles</name>
    <message>
        <source>General</source>
        <translation>Generale</translation>
    </message>
    <message>
        <source>Events</source>
        <translation>Eventi</translation>
    </message>
    <message>
        <source>Grinder</source>
        <translation>Macinacaffè</translation>
    </message>
    <message>
        <source>Capsules</source>
        <translation>Capsule</translation>
    </message>
    <message>
        <source>Actuator board</source>
        <translation>Scheda attuatori</translation>
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
        <translation>Evento</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>Avviso</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Errore</translation>
    </message>
    <message>
        <source>Critical</source>
        <translation>Critico</translation>
    </message>
    <message>
        <source>Grinder</source>
        <translation>Macinacaffè</translation>
    </message>
    <message>
        <source>Capsule</source>
        <translation>Capsula</translation>
    </message>
    <message>
        <source>Actuator board</source>
        <translation>Scheda attuatori</translation>
    </message>
</context>
<context>
    <name>LogPage</name>
    <message>
        <source>Log</source>
        <translation>Log</translation>
    </message>
    <message>
        <source>From %1</source>
        <translation>Da %1</translation>
    </message>
    <message>
        <source>All modules</source>
        <translation>Tutti i moduli</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pausa</translation>
    </message>
    <message numerus="yes">
        <source>%n line(s) came faster than this view could take them. The log file has them.</source>
        <translation>
            <numerusform>%n riga è arrivata più in fretta di quanto questa vista potesse accoglierla. Il file di log la contiene.</numerusform>
            <numerusform>%n righe sono arrivate più in fretta di quanto questa vista potesse accoglierle. Il file di log le contiene.</numerusform>
        </translation>
    </message>
    <message>
        <source>No lines</source>
        <translation>Nessuna riga</translation>
    </message>
    <message>
        <source>No line matches the filters above.</source>
        <translation>Nessuna riga corrisponde ai filtri in alto.</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>Riprendi</translation>
    </message>
    <message>
        <source>Clear the view</source>
        <translation>Svuota la vista</translation>
    </message>
    <message>
        <source>This program has no folders for log files.</source>
        <translation>Questo programma non ha cartelle per i file di log.</translation>
    </message>
    <message>
        <source>New lines appear here as soon as they are logged.</source>
        <translation>Le nuove righe appaiono qui non appena vengono registrate.</translation>
    </message>
</context>
<context>
    <name>MachinePage</name>
    <message>
        <source>Machine</source>
        <translation>Macchina</translation>
    </message>
    <message>
        <source>Not running</source>
        <translation>Non in funzione</translation>
    </message>
    <message>
        <source>for %1</source>
        <translation>da %1</translation>
    </message>
    <message>
        <source>Last changes</source>
        <translation>Ultimi cambi</translation>
    </message>
    <message>
        <source>Smaller</source>
        <translation>Riduci</translation>
    </message>
    <message>
        <source>Larger</source>
        <translation>Ingrandisci</translation>
    </message>
    <message>
        <source>No machine to show</source>
        <translation>Nessuna macchina da mostrare</translation>
    </message>
    <message>
        <source>The application offers its state machines to this page by ViewedMachines::offer().</source>
        <translation>L&apos;applicazione offre a questa pagina le sue macchine a stati con ViewedMachines::offer().</translation>
    </message>
    <message>
        <source>Fit to view</source>
        <translation>Adatta alla vista</translation>
    </message>
</context>
<context>
    <name>MachinePicture</name>
    <message>
        <source>No picture</source>
        <translation>Nessuna immagine</translation>
    </message>
</context>
<context>
    <name>MachineView</name>
    <message numerus="yes">
        <source>The machine has %n state(s) and is too large for a picture.</source>
        <translation>
            <numerusform>La macchina ha %n stato ed è troppo grande per un&apos;immagine.</numerusform>
            <numerusform>La macchina ha %n stati ed è troppo grande per un&apos;immagine.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ModulesDialog</name>
    <message>
        <source>Log modules</source>
        <translation>Moduli di log</translation>
    </message>
    <message>
        <source>A tap shows the lines of one module. The switch turns debug lines on.</source>
        <translation>Un tocco mostra le righe di un modulo. L&apos;interruttore attiva le righe di debug.</translation>
    </message>
    <message>
        <source>All modules</source>
        <translation>Tutti i moduli</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Chiudi</translation>
    </message>
</context>
<context>
    <name>NetworkTime</name>
    <message>
        <source>Network time by ntpd</source>
        <translation>Ora di rete con ntpd</translation>
    </message>
    <message>
        <source>To get it: apt install ntp, and a server of pool.ntp.org in /etc/ntp.conf</source>
        <translation>Per ottenerlo: apt install ntp e un server di pool.ntp.org in /etc/ntp.conf</translation>
    </message>
    <message>
        <source>Time zones</source>
        <translation>Fusi orari</translation>
    </message>
    <message>
        <source>To get it: apt install tzdata</source>
        <translation>Per ottenerlo: apt install tzdata</translation>
    </message>
    <message>
        <source>Network time by systemd</source>
        <translation>Ora di rete con systemd</translation>
    </message>
    <message>
        <source>To get it: apt install systemd-timesyncd</source>
        <translation>Per ottenerlo: apt install systemd-timesyncd</translation>
    </message>
    <message>
        <source>Services</source>
        <translation>Servizi</translation>
    </message>
    <message>
        <source>Network time</source>
        <translation>Ora di rete</translation>
    </message>
    <message>
        <source>No service</source>
        <translation>Nessun servizio</translation>
    </message>
    <message>
        <source>The application adds its services, such as service::Ntp, to the ServiceManager.</source>
        <translation>L&apos;applicazione aggiunge i suoi servizi, come service::Ntp, al ServiceManager.</translation>
    </message>
    <message>
        <source>Packages</source>
        <translation>Pacchetti</translation>
    </message>
    <message>
        <source>Not supported by this machine</source>
        <translation>Non supportato da questa macchina</translation>
    </message>
</context>
<context>
    <name>OverviewPage</name>
    <message>
        <source>Overview</source>
        <translation>Riepilogo</translation>
    </message>
    <message>
        <source>Log files</source>
        <translation>File di log</translation>
    </message>
    <message>
        <source>Failing</source>
        <translation>In errore</translation>
    </message>
    <message>
        <source>All written</source>
        <translation>Tutti scritti</translation>
    </message>
    <message>
        <source>No line lost</source>
        <translation>Nessuna riga persa</translation>
    </message>
    <message>
        <source>Date and time</source>
        <translation>Data e ora</translation>
    </message>
    <message>
        <source>Threads</source>
        <translation>Thread</translation>
    </message>
    <message>
        <source>Not watched</source>
        <translation>Non sorvegliati</translation>
    </message>
    <message>
        <source>One is late</source>
        <translation>Uno è in ritardo</translation>
    </message>
    <message>
        <source>All on time</source>
        <translation>Tutti puntuali</translation>
    </message>
    <message>
        <source>%1 watched</source>
        <translation>%1 sorvegliati</translation>
    </message>
    <message>
        <source>The library was built without the monitor.</source>
        <translation>La libreria è stata compilata senza il monitor.</translation>
    </message>
    <message>
        <source>Last crash</source>
        <translation>Ultimo crash</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Nessuno</translation>
    </message>
    <message>
        <source>There is no crash report.</source>
        <translation>Non ci sono rapporti di crash.</translation>
    </message>
    <message>
        <source>Switches</source>
        <translation>Opzioni</translation>
    </message>
    <message>
        <source>%1 changed</source>
        <translation>%1 modificate</translation>
    </message>
    <message>
        <source>Memory and disk</source>
        <translation>Memoria e disco</translation>
    </message>
    <message>
        <source>Memory</source>
        <translation>Memoria</translation>
    </message>
    <message>
        <source>Disk</source>
        <translation>Disco</translation>
    </message>
    <message>
        <source>Running for</source>
        <translation>Acceso da</translation>
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
        <translation>Senza versione</translation>
    </message>
    <message>
        <source>%1
ZelTools %2, Qt %3</source>
        <translation>%1
ZelTools %2, Qt %3</translation>
    </message>
    <message>
        <source>State machines</source>
        <translation>Macchine a stati</translation>
    </message>
    <message>
        <source>None shown</source>
        <translation>Nessuna mostrata</translation>
    </message>
    <message>
        <source>The application offers none.</source>
        <translation>L&apos;applicazione non ne offre.</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1: stopped</source>
        <translation>%1: ferma</translation>
    </message>
    <message>
        <source>Lines lost: %1</source>
        <translation>Righe perse: %1</translation>
    </message>
    <message>
        <source>This program has no folders for log files.</source>
        <translation>Questo programma non ha cartelle per i file di log.</translation>
    </message>
    <message>
        <source>One has stalled</source>
        <translation>Uno è bloccato</translation>
    </message>
    <message>
        <source>Defaults</source>
        <translation>Predefiniti</translation>
    </message>
    <message>
        <source>Model %1</source>
        <translation>Modello %1</translation>
    </message>
    <message>
        <source>Board build</source>
        <translation>Build per la scheda</translation>
    </message>
    <message>
        <source>Desktop build</source>
        <translation>Build per desktop</translation>
    </message>
</context>
<context>
    <name>PageTurner</name>
    <message>
        <source>First page</source>
        <translation>Prima pagina</translation>
    </message>
    <message>
        <source>Page %1 of %2</source>
        <translation>Pagina %1 di %2</translation>
    </message>
    <message>
        <source>Last page</source>
        <translation>Ultima pagina</translation>
    </message>
    <message>
        <source>Previous page</source>
        <translation>Pagina precedente</translation>
    </message>
    <message>
        <source>Next page</source>
        <translation>Pagina successiva</translation>
    </message>
</context>
<context>
    <name>Rail</name>
    <message>
        <source>Service</source>
        <translation>Servizio</translation>
    </message>
</context>
<context>
    <name>ScreenHeader</name>
    <message>
        <source>Read only</source>
        <translation>Sola lettura</translation>
    </message>
    <message>
        <source>Operator</source>
        <translation>Operatore</translation>
    </message>
    <message>
        <source>Technician</source>
        <translation>Tecnico</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Chiudi</translation>
    </message>
</context>
<context>
    <name>SearchField</name>
    <message>
        <source>Search</source>
        <translation>Cerca</translation>
    </message>
    <message>
        <source>Clear the search</source>
        <translation>Cancella la ricerca</translation>
    </message>
</context>
<context>
    <name>SupportPage</name>
    <message>
        <source>Support</source>
        <translation>Assistenza</translation>
    </message>
    <message>
        <source>Where the bundle goes</source>
        <translation>Destinazione del pacchetto</translation>
    </message>
    <message>
        <source>Support bundle</source>
        <translation>Pacchetto di assistenza</translation>
    </message>
    <message>
        <source>This build makes no support bundles</source>
        <translation>Questa build non crea pacchetti di assistenza</translation>
    </message>
    <message>
        <source>Install Debian&apos;s package libarchive-dev and build the library with the CMake option ZELTOOLS_LIBARCHIVE.</source>
        <translation>Installare il pacchetto Debian libarchive-dev e compilare la libreria con l&apos;opzione CMake ZELTOOLS_LIBARCHIVE.</translation>
    </message>
</context>
<context>
    <name>SwitchDialog</name>
    <message>
        <source>%1. The build gives no value.</source>
        <translation>%1. La build non dà alcun valore.</translation>
    </message>
    <message>
        <source>%1. The build gives the value %2.</source>
        <translation>%1. La build dà il valore %2.</translation>
    </message>
    <message>
        <source>Set</source>
        <translation>Imposta</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Chiudi</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annulla</translation>
    </message>
    <message>
        <source>On</source>
        <translation>Acceso</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>Spento</translation>
    </message>
    <message>
        <source>Back to the value of the build</source>
        <translation>Torna al valore della build</translation>
    </message>
    <message>
        <source>The present value comes from the environment.</source>
        <translation>Il valore attuale proviene dall&apos;ambiente.</translation>
    </message>
    <message>
        <source>It is the present value.</source>
        <translation>È il valore attuale.</translation>
    </message>
    <message>
        <source>No value is set.</source>
        <translation>Nessun valore impostato.</translation>
    </message>
</context>
<context>
    <name>SwitchRow</name>
    <message>
        <source>not set</source>
        <translation>non impostata</translation>
    </message>
    <message>
        <source>empty</source>
        <translation>vuota</translation>
    </message>
</context>
<context>
    <name>Switches</name>
    <message>
        <source>Enabled for debug build</source>
        <translation>Attivo nella build di debug</translation>
    </message>
    <message>
        <source>Enabled on board build</source>
        <translation>Attivo nella build per la scheda</translation>
    </message>
    <message>
        <source>Enabled on PC build</source>
        <translation>Attivo nella build per PC</translation>
    </message>
    <message>
        <source>Enabled on Android</source>
        <translation>Attivo su Android</translation>
    </message>
    <message>
        <source>Enabled on Linux</source>
        <translation>Attivo su Linux</translation>
    </message>
    <message>
        <source>Enabled on Windows</source>
        <translation>Attivo su Windows</translation>
    </message>
    <message>
        <source>Encrypt configuration database</source>
        <translation>Cifra il database di configurazione</translation>
    </message>
    <message>
        <source>Encrypt machine database</source>
        <translation>Cifra il database della macchina</translation>
    </message>
    <message>
        <source>Force native gui</source>
        <translation>Forza l&apos;interfaccia nativa</translation>
    </message>
    <message>
        <source>Force full screen mode</source>
        <translation>Forza la modalità a schermo intero</translation>
    </message>
    <message>
        <source>Enabled on arietta build</source>
        <translation>Attivo nella build Arietta</translation>
    </message>
    <message>
        <source>Enabled on Cadenza build</source>
        <translation>Attivo nella build Cadenza</translation>
    </message>
    <message>
        <source>Enabled on sonata build</source>
        <translation>Attivo nella build Sonata</translation>
    </message>
    <message>
        <source>Enabled on vivo build</source>
        <translation>Attivo nella build Vivo</translation>
    </message>
    <message>
        <source>Enable field test logs</source>
        <translation>Attiva i log dei test sul campo</translation>
    </message>
    <message>
        <source>Enable lab test feature</source>
        <translation>Attiva la funzione per i test di laboratorio</translation>
    </message>
    <message>
        <source>Enable sonata sdk verbose output</source>
        <translation>Attiva l&apos;output dettagliato dell&apos;SDK Sonata</translation>
    </message>
    <message>
        <source>Dump M4 debug to file</source>
        <translation>Scrivi il debug di M4 su file</translation>
    </message>
    <message>
        <source>Enable Self Learning tests</source>
        <translation>Attiva i test di autoapprendimento</translation>
    </message>
    <message>
        <source>Force usage of virtual can interface</source>
        <translation>Forza l&apos;uso dell&apos;interfaccia CAN virtuale</translation>
    </message>
    <message>
        <source>Enable CAN bus simulation</source>
        <translation>Attiva la simulazione del CAN bus</translation>
    </message>
    <message>
        <source>Disable new canbus messages management</source>
        <translation>Disattiva la nuova gestione dei messaggi CAN bus</translation>
    </message>
    <message>
        <source>Dump can to log file</source>
        <translation>Scrivi i messaggi CAN nel file di log</translation>
    </message>
    <message>
        <source>Dump can to debug output</source>
        <translation>Scrivi i messaggi CAN sull&apos;output di debug</translation>
    </message>
    <message>
        <source>Set canbus interface path, e.g. can0 or /tmp/ttyS0</source>
        <translation>Percorso dell&apos;interfaccia CAN bus, es. can0 o /tmp/ttyS0</translation>
    </message>
    <message>
        <source>Cold products simulation</source>
        <translation>Simulazione dei prodotti freddi</translation>
    </message>
    <message>
        <source>CTG products simulation</source>
        <translation>Simulazione dei prodotti CTG</translation>
    </message>
    <message>
        <source>Use real CAN bus over USB adapter</source>
        <translation>Usa il CAN bus reale tramite adattatore USB</translation>
    </message>
    <message>
        <source>Enable payment simulation over TCP interface</source>
        <translation>Attiva la simulazione dei pagamenti tramite interfaccia TCP</translation>
    </message>
    <message>
        <source>Enable payment over ERS protocol</source>
        <translation>Attiva il pagamento tramite il protocollo ERS</translation>
    </message>
    <message>
        <source>Enable payment simulation</source>
        <translation>Attiva la simulazione dei pagamenti</translation>
    </message>
    <message>
        <source>Executive payment device simulator model (DEFAULT/UIC_180/MIZIP)</source>
        <translation>Modello del simulatore del dispositivo di pagamento Executive (DEFAULT/UIC_180/MIZIP)</translation>
    </message>
    <message>
        <source>Cashless device 0 simulator model (Mizip/Microtronic/Nayax/AlwaysIdle/VendingCat/FakeAlwaysIdle/OPC</source>
        <translation>Modello del simulatore del dispositivo cashless 0 (Mizip/Microtronic/Nayax/AlwaysIdle/VendingCat/FakeAlwaysIdle/OPC)</translation>
    </message>
    <message>
        <source>Cashless device 1 simulator model (Mizip/Microtronic/Nayax/AlwaysIdle/VendingCat/FakeAlwaysIdle/OPC</source>
        <translation>Modello del simulatore del dispositivo cashless 1 (Mizip/Microtronic/Nayax/AlwaysIdle/VendingCat/FakeAlwaysIdle/OPC)</translation>
    </message>
    <message>
        <source>Run payment in main thread</source>
        <translation>Esegui i pagamenti nel thread principale</translation>
    </message>
    <message>
        <source>Always send configuration to plume device</source>
        <translation>Invia sempre la configurazione al dispositivo Plume</translation>
    </message>
    <message>
        <source>Dump payment logs to payment log file</source>
        <translation>Scrivi i log dei pagamenti nel loro file di log</translation>
    </message>
    <message>
        <source>Dump payment logs to application output</source>
        <translation>Scrivi i log dei pagamenti sull&apos;output dell&apos;applicazione</translation>
    </message>
    <message>
        <source>Dump payment Hi files to application output</source>
        <translation>Scrivi i file Hi dei pagamenti sull&apos;output dell&apos;applicazione</translation>
    </message>
    <message>
        <source>Provide explicit payment method selection</source>
        <translation>Offri la scelta esplicita del metodo di pagamento</translation>
    </message>
    <message>
        <source>Disable watchdog</source>
        <translation>Disattiva il watchdog</translation>
    </message>
    <message>
        <source>Use QML screensaver</source>
        <translation>Usa lo screensaver QML</translation>
    </message>
    <message>
        <source>Enable cup sensors simulation</source>
        <translation>Attiva la simulazione dei sensori bicchiere</translation>
    </message>
    <message>
        <source>Enable extend lifetime feature in cup sensors simulation</source>
        <translation>Attiva la durata estesa nella simulazione dei sensori bicchiere</translation>
    </message>
    <message>
        <source>Cup sensors simulation file path</source>
        <translation>Percorso del file di simulazione dei sensori bicchiere</translation>
    </message>
    <message>
        <source>Dump cupsensor logs to cupsensors log file</source>
        <translation>Scrivi i log dei sensori bicchiere nel loro file di log</translation>
    </message>
    <message>
        <source>VL6180X simulation on PC via I2C bus.
If disabled, default cup sensor is simulated.
(NOTE: VL6180X_SIMULATION_DEVICE takes effect only if CUPSENSOR_SIMULATION is enabled)</source>
        <translation>Simulazione di VL6180X su PC tramite bus I2C.
Se disattivata, viene simulato il sensore bicchiere predefinito.
(VL6180X_SIMULATION_DEVICE ha effetto solo se CUPSENSOR_SIMULATION è attivo.)</translation>
    </message>
    <message>
        <source>Hide payment from technical menu</source>
        <translation>Nascondi i pagamenti dal menu tecnico</translation>
    </message>
    <message>
        <source>Dump I2C logs to logs</source>
        <translation>Scrivi i log I2C nei file di log</translation>
    </message>
    <message>
        <source>Dump I2C logs to application output</source>
        <translation>Scrivi i log I2C sull&apos;output dell&apos;applicazione</translation>
    </message>
    <message>
        <source>Show Halcyon server address and port</source>
        <translation>Mostra indirizzo e porta del server Halcyon</translation>
    </message>
    <message>
        <source>Show Halcyon server switch</source>
        <translation>Mostra l&apos;interruttore del server Halcyon</translation>
    </message>
    <message>
        <source>Disable Halcyon modem public IP address</source>
        <translation>Disattiva l&apos;indirizzo IP pubblico del modem Halcyon</translation>
    </message>
    <message>
        <source>Enable Halcyon APN override</source>
        <translation>Attiva la sostituzione dell&apos;APN di Halcyon</translation>
    </message>
    <message>
        <source>Show touchless server switch</source>
        <translation>Mostra l&apos;interruttore del server touchless</translation>
    </message>
    <message>
        <source>Use vestaone version for windows</source>
        <translation>Usa la versione Vesta One per Windows</translation>
    </message>
    <message>
        <source>Disable keyboard buzzer on vesta one</source>
        <translation>Disattiva il cicalino della tastiera su Vesta One</translation>
    </message>
    <message>
        <source>Directly go to given menu (eg. 8.1.10) when entering vestaone technical menu</source>
        <translation>Apri direttamente questo menu (es. 8.1.10) entrando nel menu tecnico di Vesta One</translation>
    </message>
    <message>
        <source>Enabled on android emulator</source>
        <translation>Attivo sull&apos;emulatore Android</translation>
    </message>
    <message>
        <source>Force android assets copy on startup</source>
        <translation>Forza la copia degli asset Android all&apos;avvio</translation>
    </message>
    <message>
        <source>Android application package name</source>
        <translation>Nome del pacchetto dell&apos;applicazione Android</translation>
    </message>
    <message>
        <source>Android application activity</source>
        <translation>Activity dell&apos;applicazione Android</translation>
    </message>
    <message>
        <source>Disable android task lock</source>
        <translation>Disattiva il blocco dei task di Android</translation>
    </message>
    <message>
        <source>Dump ERS protocol data to application output</source>
        <translation>Scrivi i dati del protocollo ERS sull&apos;output dell&apos;applicazione</translation>
    </message>
    <message>
        <source>Dump ERS protocol data to log file</source>
        <translation>Scrivi i dati del protocollo ERS nel file di log</translation>
    </message>
    <message>
        <source>Use ERS protocol for erogation</source>
        <translation>Usa il protocollo ERS per l&apos;erogazione</translation>
    </message>
    <message>
        <source>ERS master interface path on desktop</source>
        <translation>Percorso dell&apos;interfaccia master ERS sul desktop</translation>
    </message>
    <message>
        <source>Disable power board keep alive</source>
        <translation>Disattiva il keep-alive della scheda di potenza</translation>
    </message>
    <message>
        <source>Enable power board simulation</source>
        <translation>Attiva la simulazione della scheda di potenza</translation>
    </message>
    <message>
        <source>Ignore power board error status</source>
        <translation>Ignora lo stato di errore della scheda di potenza</translation>
    </message>
    <message>
        <source>Disable power board temperature reading</source>
        <translation>Disattiva la lettura della temperatura della scheda di potenza</translation>
    </message>
    <message>
        <source>Force using CAN interface also on desktop</source>
        <translation>Forza l&apos;uso dell&apos;interfaccia CAN anche sul desktop</translation>
    </message>
    <message>
        <source>No_UL_Limit_120</source>
        <translation>Nessun limite UL 120</translation>
    </message>
    <message>
        <source>Force USB storage path</source>
        <translation>Forza il percorso della memoria USB</translation>
    </message>
    <message>
        <source>Fill all translations with sample</source>
        <translation>Riempi tutte le traduzioni con un testo di prova</translation>
    </message>
    <message>
        <source>Fill missing translations with sample</source>
        <translation>Riempi le traduzioni mancanti con un testo di prova</translation>
    </message>
    <message>
        <source>Indicate Arietta Meridian</source>
        <translation>Indica Arietta Meridian</translation>
    </message>
    <message>
        <source>Indicate Sonata Meridian</source>
        <translation>Indica Sonata Meridian</translation>
    </message>
    <message>
        <source>Indicate Vivo Meridian</source>
        <translation>Indica Vivo Meridian</translation>
    </message>
    <message>
        <source>Don&apos;t load M4 firmware on startup</source>
        <translation>Non caricare il firmware M4 all&apos;avvio</translation>
    </message>
    <message>
        <source>Don&apos;t start and stop bluetooth daemon</source>
        <translation>Non avviare né arrestare il demone Bluetooth</translation>
    </message>
    <message>
        <source>Do not modify network configuration at runtime</source>
        <translation>Non modificare la configurazione di rete durante l&apos;esecuzione</translation>
    </message>
    <message>
        <source>Enable ethernet debug mode</source>
        <translation>Attiva la modalità di debug Ethernet</translation>
    </message>
    <message>
        <source>Start machine in Tessel mode.</source>
        <translation>Avvia la macchina in modalità Tessel</translation>
    </message>
    <message>
        <source>Enable feature conditioned to ZEL_CUSTOM_1_MANAGEMENT variable</source>
        <translation>Attiva la funzione legata alla variabile ZEL_CUSTOM_1_MANAGEMENT</translation>
    </message>
    <message>
        <source>Connect to DateTimeSimulator using given simulation interface address</source>
        <translation>Connetti a DateTimeSimulator con questo indirizzo dell&apos;interfaccia di simulazione</translation>
    </message>
    <message>
        <source>Ignore data recived from ICB but apply the time component</source>
        <translation>Ignora i dati ricevuti dall&apos;ICB tranne l&apos;ora</translation>
    </message>
    <message>
        <source>Piston Position Visible for ESFB with all canister.</source>
        <translation>Posizione del pistone visibile per ESFB con tutti i contenitori</translation>
    </message>
    <message>
        <source>Set a different port for EVADTS communication</source>
        <translation>Imposta un&apos;altra porta per la comunicazione EVADTS</translation>
    </message>
    <message>
        <source>Force Corvid device ID</source>
        <translation>Forza l&apos;ID del dispositivo Corvid</translation>
    </message>
    <message>
        <source>Inhibit Corvid transaction manager</source>
        <translation>Inibisci il gestore delle transazioni Corvid</translation>
    </message>
    <message>
        <source>Indicate LyraCore For Windows</source>
        <translation>Indica LyraCore per Windows</translation>
    </message>
    <message>
        <source>Set startup menu for Cap Keys gui package</source>
        <translation>Menu iniziale del pacchetto grafico Cap Keys</translation>
    </message>
    <message>
        <source>Simulate capacitive keys keyboard</source>
        <translation>Simula la tastiera a tasti capacitivi</translation>
    </message>
    <message>
        <source>Simulate capacitive keys leds</source>
        <translation>Simula i LED dei tasti capacitivi</translation>
    </message>
</context>
<context>
    <name>SwitchesPage</name>
    <message>
        <source>Switches</source>
        <translation>Opzioni</translation>
    </message>
    <message>
        <source>The switch is not in the list any more.</source>
        <translation>L&apos;opzione non è più nell&apos;elenco.</translation>
    </message>
    <message>
        <source>Changed</source>
        <translation>Modificate</translation>
    </message>
    <message>
        <source>You can look at all switches. A technician can change them.</source>
        <translation>Si possono vedere tutte le opzioni. Un tecnico può modificarle.</translation>
    </message>
    <message>
        <source>Save again</source>
        <translation>Salva di nuovo</translation>
    </message>
    <message>
        <source>Saved</source>
        <translation>Salvato</translation>
    </message>
    <message>
        <source>No switches</source>
        <translation>Nessuna opzione</translation>
    </message>
    <message>
        <source>No switch matches the filters above.</source>
        <translation>Nessuna opzione corrisponde ai filtri in alto.</translation>
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
        <translation>Elemento sorvegliato</translation>
    </message>
    <message>
        <source>%1 since the last tick</source>
        <translation>%1 dall&apos;ultimo segnale</translation>
    </message>
    <message>
        <source>The calls of a thread are known once it has stalled.</source>
        <translation>Le chiamate di un thread sono note quando si blocca.</translation>
    </message>
</context>
<context>
    <name>ThreadsPage</name>
    <message>
        <source>Threads</source>
        <translation>Thread</translation>
    </message>
    <message>
        <source>A thread has stalled</source>
        <translation>Un thread è bloccato</translation>
    </message>
    <message>
        <source>A thread is late</source>
        <translation>Un thread è in ritardo</translation>
    </message>
    <message>
        <source>All threads work</source>
        <translation>Tutti i thread lavorano</translation>
    </message>
    <message>
        <source>Recovered since the start: %1</source>
        <translation>Ripristinati dall&apos;avvio: %1</translation>
    </message>
    <message>
        <source>No thread has registered</source>
        <translation>Nessun thread si è registrato</translation>
    </message>
    <message>
        <source>Threads are not watched</source>
        <translation>I thread non sono sorvegliati</translation>
    </message>
    <message>
        <source>The application registers its threads with the library&apos;s Monitor, or starts them as MonitoredQThread.</source>
        <translation>L&apos;applicazione registra i suoi thread nel Monitor della libreria o li avvia come MonitoredQThread.</translation>
    </message>
    <message>
        <source>This build of the library watches no threads. The CMake option ZELTOOLS_MONITORING builds one that does.</source>
        <translation>Questa build della libreria non sorveglia i thread. L&apos;opzione CMake ZELTOOLS_MONITORING ne produce una che lo fa.</translation>
    </message>
</context>
<context>
    <name>TimePage</name>
    <message>
        <source>Date and time</source>
        <translation>Data e ora</translation>
    </message>
    <message>
        <source>Clock</source>
        <translation>Orologio</translation>
    </message>
    <message>
        <source>Time zone</source>
        <translation>Fuso orario</translation>
    </message>
    <message>
        <source>Network time</source>
        <translation>Ora di rete</translation>
    </message>
</context>
<context>
    <name>UsageBar</name>
    <message>
        <source>%1: %2 free</source>
        <translation>%1: %2 liberi</translation>
    </message>
</context>
<context>
    <name>ZoneChoice</name>
    <message>
        <source>The time zone is now %1.</source>
        <translation>Il fuso orario ora è %1.</translation>
    </message>
    <message>
        <source>No such time zone</source>
        <translation>Nessun fuso orario trovato</translation>
    </message>
    <message>
        <source>Choose an area</source>
        <translation>Scegliere un&apos;area</translation>
    </message>
    <message>
        <source>This machine has no time zones</source>
        <translation>Questa macchina non ha fusi orari</translation>
    </message>
    <message>
        <source>Add the package tzdata to its image: apt install tzdata.</source>
        <translation>Aggiungere alla sua immagine il pacchetto tzdata: apt install tzdata.</translation>
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
        <translation>Solo un operatore può modificarlo.</translation>
    </message>
    <message>
        <source>Only a technician may change this.</source>
        <translation>Solo un tecnico può modificarlo.</translation>
    </message>
    <message>
        <source>This program has no folders for log files.</source>
        <translation>Questo programma non ha cartelle per i file di log.</translation>
    </message>
</context>
<context>
    <name>zeltools::quick::BundleTask</name>
    <message>
        <source>The library on this machine was built without support bundles.</source>
        <translation>La libreria su questa macchina è stata compilata senza pacchetti di assistenza.</translation>
    </message>
    <message>
        <source>The application does not tell where its files are.</source>
        <translation>L&apos;applicazione non indica dove si trovano i suoi file.</translation>
    </message>
    <message>
        <source>The folder %1 does not exist.</source>
        <translation>La cartella %1 non esiste.</translation>
    </message>
    <message>
        <source>A file cannot have the name %1.</source>
        <translation>Un file non può chiamarsi %1.</translation>
    </message>
</context>
<context>
    <name>zeltools::quick::Clock</name>
    <message>
        <source>This is not a date and time.</source>
        <translation>Questa non è una data con ora.</translation>
    </message>
    <message>
        <source>The clock could not be set.</source>
        <translation>Impossibile impostare l&apos;orologio.</translation>
    </message>
    <message>
        <source>The time zone could not be switched.</source>
        <translation>Impossibile cambiare il fuso orario.</translation>
    </message>
</context>
<context>
    <name>zeltools::quick::CrashReportsModel</name>
    <message>
        <source>The file is no longer there.</source>
        <translation>Il file non c&apos;è più.</translation>
    </message>
    <message>
        <source>The report cannot be deleted: %1</source>
        <translation>Impossibile eliminare il rapporto: %1</translation>
    </message>
    <message>
        <source>The report does not tell the reason.</source>
        <translation>Il rapporto non indica il motivo.</translation>
    </message>
    <message>
        <source>The file is damaged: %1</source>
        <translation>Il file è danneggiato: %1</translation>
    </message>
</context>
<context>
    <name>zeltools::quick::EventHistoryModel</name>
    <message>
        <source>This program has no folders for log files.</source>
        <translation>Questo programma non ha cartelle per i file di log.</translation>
    </message>
    <message>
        <source>“%1” is not a date. Write the day, month and year as 31/12/2026.</source>
        <translation>«%1» non è una data. Scrivere giorno, mese e anno come 31/12/2026.</translation>
    </message>
</context>
<context>
    <name>zeltools::quick::FilesAccess</name>
    <message>
        <source>This file is not accessible here.</source>
        <translation>Questo file non è accessibile da qui.</translation>
    </message>
    <message>
        <source>This is not a file.</source>
        <translation>Questo non è un file.</translation>
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
        <translation>%1 g %2 h</translation>
    </message>
</context>
<context>
    <name>zeltools::quick::LogModulesModel</name>
    <message>
        <source>This module does not exist.</source>
        <translation>Questo modulo non esiste.</translation>
    </message>
</context>
<context>
    <name>zeltools::quick::MachineGraph</name>
    <message>
        <source>after %1</source>
        <translation>dopo %1</translation>
    </message>
    <message>
        <source>[guard]</source>
        <translation>[condizione]</translation>
    </message>
</context>
<context>
    <name>zeltools::quick::MachineView</name>
    <message numerus="yes">
        <source>The machine has %n state(s) and is too large for a picture.</source>
        <translation>
            <numerusform>La macchina ha %n stato ed è troppo grande per un&apos;immagine.</numerusform>
            <numerusform>La macchina ha %n stati ed è troppo grande per un&apos;immagine.</numerusform>
        </translation>
    </message>
    <message>
        <source>This machine is not described as data, so that there is no picture of it.</source>
        <translation>Questa macchina non è descritta come dati, perciò non ce n&apos;è un&apos;immagine.</translation>
    </message>
</context>
<context>
    <name>zeltools::quick::ServicesModel</name>
    <message>
        <source>There is no such service.</source>
        <translation>Questo servizio non esiste.</translation>
    </message>
    <message>
        <source>The service could not be switched.</source>
        <translation>Impossibile commutare il servizio.</translation>
    </message>
</context>
<context>
    <name>zeltools::quick::SwitchEditor</name>
    <message>
        <source>This switch is no longer there.</source>
        <translation>Questa opzione non esiste più.</translation>
    </message>
    <message>
        <source>The environment file cannot hold a line break, nor a blank at an end.</source>
        <translation>Il file di ambiente non può contenere un&apos;interruzione di riga né spazi all&apos;inizio o alla fine.</translation>
    </message>
    <message>
        <source>There is no environment file; changes last until the program ends.</source>
        <translation>Non c&apos;è un file di ambiente; le modifiche valgono fino alla fine del programma.</translation>
    </message>
    <message>
        <source>The environment file is unchanged, and changes last until the program ends: %1</source>
        <translation>Il file di ambiente è invariato e le modifiche valgono fino alla fine del programma: %1</translation>
    </message>
    <message>
        <source>the file was refused</source>
        <translation>il file è stato rifiutato</translation>
    </message>
</context>
<context>
    <name>zeltools::quick::SwitchTexts</name>
    <message>
        <source>Text</source>
        <translation>Testo</translation>
    </message>
    <message>
        <source>Number</source>
        <translation>Numero</translation>
    </message>
    <message>
        <source>On or off</source>
        <translation>Acceso o spento</translation>
    </message>
    <message>
        <source>General</source>
        <translation>Generale</translation>
    </message>
    <message>
        <source>Test</source>
        <translation>Test</translation>
    </message>
    <message>
        <source>CAN bus</source>
        <translation>CAN bus</translation>
    </message>
    <message>
        <source>Payment</source>
        <translation>Pagamento</translation>
    </message>
    <message>
        <source>Watchdog</source>
        <translation>Watchdog</translation>
    </message>
    <message>
        <source>Display</source>
        <translation>Display</translation>
    </message>
    <message>
        <source>Cup sensor</source>
        <translation>Sensore bicchiere</translation>
    </message>
    <message>
        <source>I2C</source>
        <translation>I2C</translation>
    </message>
    <message>
        <source>ERS protocol</source>
        <translation>Protocollo ERS</translation>
    </message>
    <message>
        <source>Remote server</source>
        <translation>Server remoto</translation>
    </message>
    <message>
        <source>Touchless</source>
        <translation>Senza contatto</translation>
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
        <translation>Varie</translation>
    </message>
    <message>
        <source>Power board</source>
        <translation>Scheda di potenza</translation>
    </message>
    <message>
        <source>Bluetooth</source>
        <translation>Bluetooth</translation>
    </message>
    <message>
        <source>Network</source>
        <translation>Rete</translation>
    </message>
    <message>
        <source>Date and time</source>
        <translation>Data e ora</translation>
    </message>
    <message>
        <source>Piston</source>
        <translation>Pistone</translation>
    </message>
    <message>
        <source>Capacitive keys</source>
        <translation>Tasti capacitivi</translation>
    </message>
    <message>
        <source>SocketCAN</source>
        <translation>SocketCAN</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a whole number from %2 to %3.</source>
        <translation>«%1» non è un numero intero da %2 a %3.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is neither 1 (on) nor 0 (off).</source>
        <translation>«%1» non è né 1 (acceso) né 0 (spento).</translation>
    </message>
    <message>
        <source>The switch does not take &quot;%1&quot;.</source>
        <translation>L&apos;opzione non accetta «%1».</translation>
    </message>
    <message>
        <source>All</source>
        <translation>Tutte</translation>
    </message>
</context>
<context>
    <name>zeltools::quick::ThreadsModel</name>
    <message>
        <source>on time</source>
        <translation>puntuale</translation>
    </message>
    <message>
        <source>late</source>
        <translation>in ritardo</translation>
    </message>
    <message>
        <source>stalled</source>
        <translation>bloccato</translation>
    </message>
    <message>
        <source>paused</source>
        <translation>in pausa</translation>
    </message>
</context>
</TS>
