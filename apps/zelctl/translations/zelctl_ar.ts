<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ar" sourcelanguage="en">
<context>
    <name>QCommandLineParser</name>
    <message>
        <source>Unknown option &apos;%1&apos;.</source>
        <translation>خيار مجهول &quot;%1&quot;.</translation>
    </message>
    <message>
        <source>Unknown options: %1.</source>
        <translation>خيارات مجهولة: %1.</translation>
    </message>
    <message>
        <source>Missing value after &apos;%1&apos;.</source>
        <translation>تنقص قيمة بعد &quot;%1&quot;.</translation>
    </message>
    <message>
        <source>Unexpected value after &apos;%1&apos;.</source>
        <translation>قيمة غير متوقعة بعد &quot;%1&quot;.</translation>
    </message>
</context>
<context>
    <name>zelctl</name>
    <message>
        <source>addr2line of binutils is missing, so calls have no names</source>
        <translation>برنامج addr2line من binutils غير موجود، فلا أسماء للاستدعاءات</translation>
    </message>
    <message>
        <source>addr2line takes too long for %1</source>
        <translation>يستغرق addr2line وقتًا طويلًا جدًا مع %1</translation>
    </message>
    <message>
        <source>addr2line cannot read %1</source>
        <translation>لا يستطيع addr2line قراءة %1</translation>
    </message>
    <message>
        <source>addr2line does not give the names in %1 one by one</source>
        <translation>لا يعطي addr2line الأسماء في %1 واحدًا واحدًا</translation>
    </message>
    <message>
        <source>--level is a number above 0</source>
        <translation>--level عدد أكبر من 0</translation>
    </message>
    <message>
        <source>Packs the logs of a machine and a description of the running system into one file, and reads such a file without unpacking it.

OUT appears when it is complete. What cannot be read is named on stderr and in the manifest. For a name that ends in .crypt, the key comes from --key-file or from the environment variable ZEL_KEY; the cipher only protects against casual reading.</source>
        <translation>يجمع سجلات ماكينة ووصفًا للنظام العامل في ملف واحد، ويقرأ مثل هذا الملف دون فكه.

يظهر OUT عند اكتماله. ما تتعذر قراءته يُذكر على stderr وفي البيان. إذا انتهى الاسم بـ .crypt فالمفتاح السري من --key-file أو من متغير البيئة ZEL_KEY؛ ولا يحمي التشفير إلا من القراءة العابرة.</translation>
    </message>
    <message>
        <source>Packs the log files.</source>
        <translation>يجمع ملفات السجل.</translation>
    </message>
    <message>
        <source>Checks that all files are there and undamaged.</source>
        <translation>يتحقق من وجود كل الملفات ومن سلامتها.</translation>
    </message>
    <message>
        <source>Shows which files there are.</source>
        <translation>يعرض الملفات الموجودة.</translation>
    </message>
    <message>
        <source>The folder &quot;logs&quot;, the one above it, or a folder with log files</source>
        <translation>المجلد &quot;logs&quot; أو المجلد الذي فوقه أو مجلد فيه ملفات سجل</translation>
    </message>
    <message>
        <source>The new file; its name ends in .tar.zst or .tar.gz, or with .crypt behind that</source>
        <translation>الملف الجديد؛ ينتهي اسمه بـ .tar.zst أو .tar.gz، وقد يليه .crypt</translation>
    </message>
    <message>
        <source>Reads the key, 16 hexadecimal digits, from FILE.</source>
        <translation>يقرأ المفتاح السري، وهو 16 رقمًا ستعشريًا، من FILE.</translation>
    </message>
    <message>
        <source>Adds this environment file, with the values of secrets masked.</source>
        <translation>يضيف ملف البيئة هذا مع حجب قيم الأسرار.</translation>
    </message>
    <message>
        <source>Compression: 1 to 19 for .tar.zst (3), 1 to 9 for .tar.gz (6).</source>
        <translation>الضغط: من 1 إلى 19 لـ .tar.zst (3)، ومن 1 إلى 9 لـ .tar.gz (6).</translation>
    </message>
    <message>
        <source>list: prints the manifest. verify: prints one JSON object.</source>
        <translation>list: يطبع البيان. verify: يطبع كائن JSON واحدًا.</translation>
    </message>
    <message>
        <source>The bundle is complete, though what could not be read may be missing; or the file that was read is a complete bundle.</source>
        <translation>الحزمة مكتملة، وقد ينقصها ما تعذرت قراءته؛ أو أن الملف المقروء حزمة مكتملة.</translation>
    </message>
    <message>
        <source>There is no bundle, it is damaged, or the key is missing or wrong.</source>
        <translation>لا توجد حزمة، أو هي تالفة، أو المفتاح السري غائب أو خاطئ.</translation>
    </message>
    <message>
        <source>The key, 16 hexadecimal digits, without --key-file.</source>
        <translation>المفتاح السري، وهو 16 رقمًا ستعشريًا، دون --key-file.</translation>
    </message>
    <message>
        <source>Packs all logs of a machine.</source>
        <translation>يجمع كل سجلات ماكينة.</translation>
    </message>
    <message>
        <source>Prints the manifest as JSON.</source>
        <translation>يطبع البيان بصيغة JSON.</translation>
    </message>
    <message>
        <source>this zelctl was built without libarchive, which bundles need</source>
        <translation>بُني zelctl هذا دون libarchive التي تحتاجها الحزم</translation>
    </message>
    <message>
        <source>not in the bundle: %1: %2</source>
        <translation>ليس في الحزمة: %1: %2</translation>
    </message>
    <message>
        <source>losses.json is incomplete: %1</source>
        <translation>losses.json غير مكتمل: %1</translation>
    </message>
    <message>
        <source>%1 ends with %2 bytes of zeros: %3</source>
        <translation>ينتهي %1 بعدد %2 من البايتات الصفرية: %3</translation>
    </message>
    <message>
        <source>%1 holds no log files</source>
        <translation>لا يحتوي %1 على ملفات سجل</translation>
    </message>
    <message>
        <source>writing %1 would lose the key or the environment file</source>
        <translation>كتابة %1 ستُضيّع المفتاح السري أو ملف البيئة</translation>
    </message>
    <message>
        <source>reading</source>
        <translation>قراءة</translation>
    </message>
    <message>
        <source>packing</source>
        <translation>تجميع</translation>
    </message>
    <message>
        <source>1 file in %1</source>
        <translation>ملف واحد في %1</translation>
    </message>
    <message numerus="yes">
        <source>%n files in %1</source>
        <translation>
            <numerusform>لا ملفات في %1</numerusform>
            <numerusform>ملف واحد في %1</numerusform>
            <numerusform>ملفان في %1</numerusform>
            <numerusform>%n ملفات في %1</numerusform>
            <numerusform>%n ملفًا في %1</numerusform>
            <numerusform>%n ملف في %1</numerusform>
        </translation>
    </message>
    <message>
        <source>checking</source>
        <translation>مراجعة</translation>
    </message>
    <message>
        <source>complete: 1 file of %1</source>
        <translation>مكتملة: ملف واحد بتاريخ %1</translation>
    </message>
    <message numerus="yes">
        <source>complete: %n files of %1</source>
        <translation>
            <numerusform>مكتملة: لا ملفات بتاريخ %1</numerusform>
            <numerusform>مكتملة: ملف واحد بتاريخ %1</numerusform>
            <numerusform>مكتملة: ملفان بتاريخ %1</numerusform>
            <numerusform>مكتملة: %n ملفات بتاريخ %1</numerusform>
            <numerusform>مكتملة: %n ملفًا بتاريخ %1</numerusform>
            <numerusform>مكتملة: %n ملف بتاريخ %1</numerusform>
        </translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a date and time of the form %2</source>
        <translation>&quot;%1&quot; ليس تاريخًا ووقتًا بالصيغة %2</translation>
    </message>
    <message>
        <source>there is no time zone &quot;%1&quot;</source>
        <translation>لا توجد منطقة زمنية &quot;%1&quot;</translation>
    </message>
    <message>
        <source>this computer&apos;s time zone skips %1; --zone names that of the machine</source>
        <translation>المنطقة الزمنية لهذا الحاسوب تتخطى %1؛ يحدد --zone منطقة الماكينة</translation>
    </message>
    <message>
        <source>%1 skips %2</source>
        <translation>%1 تتخطى %2</translation>
    </message>
    <message>
        <source>--zone is only valid with --set</source>
        <translation>--zone يخص --set</translation>
    </message>
    <message>
        <source>--timeout needs a number of seconds from 1 to 86400</source>
        <translation>يحتاج --timeout إلى عدد من الثواني من 1 إلى 86400</translation>
    </message>
    <message>
        <source>The simulator&apos;s end of a simulated clock: sets the clock of a machine, or prints the dates and times, in UTC, that the machine asks for, the first one or all.

A server waits for the machine to connect, a client connects to it; the machine has the other one of the two.</source>
        <translation>طرف المحاكي لساعة محاكاة: يضبط ساعة ماكينة، أو يطبع التواريخ والأوقات، بتوقيت UTC، التي تطلبها الماكينة، أولها أو كلها.

ينتظر الخادم (server) اتصال الماكينة، ويتصل العميل (client) بها؛ وللماكينة الآخر منهما.</translation>
    </message>
    <message>
        <source>tcpserver/IP/PORT, tcpclient/IP/PORT, unixserver/PATH or unixclient/PATH</source>
        <translation>tcpserver/IP/PORT أو tcpclient/IP/PORT أو unixserver/PATH أو unixclient/PATH</translation>
    </message>
    <message>
        <source>yyyy/MM/dd hh:mm:ss in the machine&apos;s zone</source>
        <translation>yyyy/MM/dd hh:mm:ss في منطقة الماكينة</translation>
    </message>
    <message>
        <source>Sets the clock to TIME. It is done when the time has been sent and the machine has not closed the link within a second; it does not confirm it.</source>
        <translation>يضبط الساعة على TIME. يتم ذلك عندما يُرسل الوقت ولا تغلق الماكينة الوصلة خلال ثانية؛ وهي لا تؤكده.</translation>
    </message>
    <message>
        <source>The machine&apos;s zone, such as Europe/Rome, where it is not this computer&apos;s. A time that the zone skips is refused, since it would make the machine&apos;s clock invalid.</source>
        <translation>منطقة الماكينة، مثل Europe/Rome، إن لم تكن منطقة هذا الحاسوب. يُرفض وقت تتخطاه المنطقة لأنه يجعل ساعة الماكينة غير صالحة.</translation>
    </message>
    <message>
        <source>Prints all that the machine asks for, until interrupted. A clock that was set runs on: a machine that connects again gets the time that it then shows.</source>
        <translation>يطبع كل ما تطلبه الماكينة حتى المقاطعة. الساعة المضبوطة تواصل سيرها: الماكينة التي تتصل من جديد تحصل على الوقت الذي تعرضه حينئذ.</translation>
    </message>
    <message>
        <source>Prints one JSON object for each time that was asked for, or set.</source>
        <translation>يطبع كائن JSON لكل وقت طُلب أو ضُبط.</translation>
    </message>
    <message>
        <source>Gives up after SECONDS, without --follow; 10 unless given.</source>
        <translation>يتوقف عن المحاولة بعد SECONDS دون --follow؛ 10 إن لم يُعطَ.</translation>
    </message>
    <message>
        <source>The time was sent, or printed.</source>
        <translation>أُرسل الوقت أو طُبع.</translation>
    </message>
    <message>
        <source>The machine did not connect, did not ask in time, or closed the link; or the command was interrupted without --follow.</source>
        <translation>لم تتصل الماكينة، أو لم تطلب في الوقت المحدد، أو أغلقت الوصلة؛ أو قوطع الأمر من دون --follow.</translation>
    </message>
    <message>
        <source>Sets the clock of the machine that listens on port 8133.</source>
        <translation>يضبط ساعة الماكينة التي تنصت على المنفذ 8133.</translation>
    </message>
    <message>
        <source>no machine has asked for a time in %1 s</source>
        <translation>لم تطلب أي ماكينة الوقت خلال %1 ث</translation>
    </message>
    <message>
        <source>no machine has connected in %1 s</source>
        <translation>لم تتصل أي ماكينة خلال %1 ث</translation>
    </message>
    <message>
        <source>the machine has closed the link, it may have another simulator</source>
        <translation>أغلقت الماكينة الوصلة، وقد يكون لها محاكٍ آخر</translation>
    </message>
    <message>
        <source>the machine has closed the link</source>
        <translation>أغلقت الماكينة الوصلة</translation>
    </message>
    <message>
        <source>%1; waiting for it</source>
        <translation>%1؛ بانتظارها</translation>
    </message>
    <message>
        <source>cannot write the output: %1</source>
        <translation>تتعذر كتابة الناتج: %1</translation>
    </message>
    <message>
        <source>Examples</source>
        <translation>أمثلة</translation>
    </message>
    <message>
        <source>Usage: zelctl COMMAND [options]</source>
        <translation>الاستخدام: zelctl COMMAND [options]</translation>
    </message>
    <message>
        <source>Commands</source>
        <translation>الأوامر</translation>
    </message>
    <message>
        <source>&quot;zelctl help COMMAND&quot; explains a command, and &quot;zelctl --version&quot; prints the version.</source>
        <translation>&quot;zelctl help COMMAND&quot; يشرح أمرًا، و&quot;zelctl --version&quot; يذكر الإصدار.</translation>
    </message>
    <message>
        <source>Usage: %1</source>
        <translation>الاستخدام: %1</translation>
    </message>
    <message>
        <source>Actions</source>
        <translation>الإجراءات</translation>
    </message>
    <message>
        <source>Options</source>
        <translation>الخيارات</translation>
    </message>
    <message>
        <source>Values</source>
        <translation>القيم</translation>
    </message>
    <message>
        <source>Environment</source>
        <translation>البيئة</translation>
    </message>
    <message>
        <source>Files</source>
        <translation>الملفات</translation>
    </message>
    <message>
        <source>Exit status</source>
        <translation>حالة الخروج</translation>
    </message>
    <message>
        <source>All is done.</source>
        <translation>تم كل شيء.</translation>
    </message>
    <message>
        <source>It failed; one line on stderr gives the reason.</source>
        <translation>فشل الأمر؛ وسطر على stderr يذكر السبب.</translation>
    </message>
    <message>
        <source>The command line is wrong. Nothing has been done.</source>
        <translation>سطر الأوامر خاطئ. لم يُنفذ شيء.</translation>
    </message>
    <message>
        <source>Shows this help.</source>
        <translation>يعرض هذه المساعدة.</translation>
    </message>
    <message>
        <source>the arguments are not UTF-8</source>
        <translation>المعاملات ليست بترميز UTF-8</translation>
    </message>
    <message>
        <source>%1; see &quot;%2 --help&quot;</source>
        <translation>%1؛ انظر &quot;%2 --help&quot;</translation>
    </message>
    <message>
        <source>--%1 is given more than once</source>
        <translation>أُعطي --%1 أكثر من مرة</translation>
    </message>
    <message>
        <source>Packs the logs of a machine into one file for support, checks such files.</source>
        <translation>يجمع سجلات ماكينة في ملف واحد للدعم، ويتحقق من مثل هذه الملفات.</translation>
    </message>
    <message>
        <source>Drives the simulated clock of a machine.</source>
        <translation>يقود الساعة المحاكاة لماكينة.</translation>
    </message>
    <message>
        <source>Prints the script by which a shell completes zelctl.</source>
        <translation>يطبع النص البرمجي الذي تكمل به الصدفة أوامر zelctl.</translation>
    </message>
    <message>
        <source>Lists and shows the crash reports of a machine.</source>
        <translation>يسرد تقارير انهيار ماكينة ويعرضها.</translation>
    </message>
    <message>
        <source>Encrypts and decrypts files, shows what their header says.</source>
        <translation>يشفر الملفات ويفك تشفيرها، ويعرض ما في ترويستها.</translation>
    </message>
    <message>
        <source>Shows and edits the environment file of a machine.</source>
        <translation>يعرض ملف بيئة ماكينة ويحرره.</translation>
    </message>
    <message>
        <source>Shows the event history of a machine in pages.</source>
        <translation>يعرض سجل أحداث ماكينة في صفحات.</translation>
    </message>
    <message>
        <source>Explains a command.</source>
        <translation>يشرح أمرًا.</translation>
    </message>
    <message>
        <source>Normalizes hexadecimal text, or converts it into bytes and back.</source>
        <translation>يحول نصًا ستعشريًا إلى صيغة واحدة، أو إلى بايتات والعكس.</translation>
    </message>
    <message>
        <source>Prints the log of the running kernel, and follows it.</source>
        <translation>يطبع سجل النواة العاملة ويتابعه.</translation>
    </message>
    <message>
        <source>Prints the log files of a machine, merged by time, and searches them.</source>
        <translation>يطبع ملفات سجل ماكينة مدموجة حسب الوقت ويبحث فيها.</translation>
    </message>
    <message>
        <source>Writes the log lines that killed processes have left.</source>
        <translation>يكتب أسطر السجل التي خلفتها عمليات أُنهيت.</translation>
    </message>
    <message>
        <source>Plays the simulator of a machine from a script, records and replays links.</source>
        <translation>يؤدي دور محاكي ماكينة وفق نص برمجي، ويسجل الوصلات ويعيد تشغيلها.</translation>
    </message>
    <message>
        <source>Compares two versions, or prints that of the library.</source>
        <translation>يقارن إصدارين، ويذكر إصدار المكتبة.</translation>
    </message>
    <message>
        <source>%1 is empty</source>
        <translation>%1 فارغ</translation>
    </message>
    <message>
        <source>%1 is missing in &quot;%2&quot;</source>
        <translation>ينقص %1 في &quot;%2&quot;</translation>
    </message>
    <message>
        <source>unexpected argument &quot;%1&quot;; usage: %2</source>
        <translation>الوسيط &quot;%1&quot; زائد؛ الاستعمال: %2</translation>
    </message>
    <message>
        <source>unknown action &quot;%1&quot;; the actions are: %2</source>
        <translation>إجراء مجهول &quot;%1&quot;؛ الصيغ هي: %2</translation>
    </message>
    <message>
        <source>an action is missing; the actions are: %1</source>
        <translation>ينقص إجراء؛ الصيغ هي: %1</translation>
    </message>
    <message>
        <source>Prints a script by which a shell completes command lines of zelctl: commands, actions, options, the names of switches, kinds of events, modules, levels, files and folders. The package installs these scripts; elsewhere they can be read by the files that a shell reads at its start.</source>
        <translation>يطبع نصًا برمجيًا تكمل به الصدفة أسطر أوامر zelctl: الأوامر والإجراءات والخيارات وأسماء المفاتيح وأنواع الأحداث والوحدات والمستويات والملفات والمجلدات. تثبّت الحزمة هذه النصوص؛ وفي غير ذلك يمكن أن تقرأها الملفات التي تقرؤها الصدفة عند بدئها.</translation>
    </message>
    <message>
        <source>The script for bash 4.4 or later; it does not need bash-completion.</source>
        <translation>النص البرمجي لـ bash 4.4 أو أحدث؛ ولا يحتاج إلى bash-completion.</translation>
    </message>
    <message>
        <source>The script for zsh, after compinit, or for a folder in fpath by the name _zelctl.</source>
        <translation>النص البرمجي لـ zsh، بعد compinit، أو لمجلد في fpath بالاسم _zelctl.</translation>
    </message>
    <message>
        <source>The script for fish 3.2 or later.</source>
        <translation>النص البرمجي لـ fish 3.2 أو أحدث.</translation>
    </message>
    <message>
        <source>The script was printed.</source>
        <translation>طُبع النص البرمجي.</translation>
    </message>
    <message>
        <source>The script could not be written.</source>
        <translation>تعذرت كتابة النص البرمجي.</translation>
    </message>
    <message>
        <source>Completes in this bash, and from ~/.bashrc in all.</source>
        <translation>يكمل في bash هذه، ومن ~/.bashrc في جميعها.</translation>
    </message>
    <message>
        <source>Completes in each fish.</source>
        <translation>يكمل في كل fish.</translation>
    </message>
    <message>
        <source>%1 is a folder; &quot;zelctl crash list&quot; names the reports in it</source>
        <translation>%1 مجلد؛ &quot;zelctl crash list&quot; يذكر التقارير التي فيه</translation>
    </message>
    <message>
        <source>Shows the crash reports of a machine.

The names of functions come from files with the same build id as the program or library that crashed: without --symbols from /usr/lib/debug/.build-id and from the programs and libraries of this machine. addr2line of binutils reads them.</source>
        <translation>يعرض تقارير انهيار ماكينة.

تأتي أسماء الدوال من ملفات لها معرّف البناء نفسه الذي للبرنامج أو المكتبة المنهارة: دون --symbols من /usr/lib/debug/.build-id ومن برامج هذا الحاسوب ومكتباته. يقرؤها addr2line من binutils.</translation>
    </message>
    <message>
        <source>One line for each report in the folder: time, signal, whether the report is complete, program, file, reason; the newest first.</source>
        <translation>سطر لكل تقرير في المجلد: الوقت والإشارة واكتمال التقرير والبرنامج والملف والسبب؛ الأحدث أولًا.</translation>
    </message>
    <message>
        <source>One report with all call stacks, the threads of the monitor, the last log lines, registers and modules.</source>
        <translation>تقرير واحد بكل مكدسات الاستدعاء والخيوط المراقبة وآخر أسطر السجل والمسجلات والوحدات.</translation>
    </message>
    <message>
        <source>The folder of the reports, or of the symbols</source>
        <translation>مجلد التقارير أو الرموز</translation>
    </message>
    <message>
        <source>The report</source>
        <translation>التقرير</translation>
    </message>
    <message>
        <source>show: takes the symbols from the files in this folder and below.</source>
        <translation>show: يأخذ الرموز من الملفات في هذا المجلد وما تحته.</translation>
    </message>
    <message>
        <source>list: does not fit the lines into the terminal.</source>
        <translation>list: لا يلائم الأسطر مع الطرفية.</translation>
    </message>
    <message>
        <source>Prints one JSON object.</source>
        <translation>يطبع كائن JSON واحدًا.</translation>
    </message>
    <message>
        <source>All was shown.</source>
        <translation>عُرض كل شيء.</translation>
    </message>
    <message>
        <source>A folder or report cannot be read, a file in the folder is not a report, or addr2line failed; the rest was shown.</source>
        <translation>تتعذر قراءة مجلد أو تقرير، أو في المجلد ملف ليس تقريرًا، أو فشل addr2line؛ وعُرض الباقي.</translation>
    </message>
    <message>
        <source>Symbols of installed programs.</source>
        <translation>رموز البرامج المثبتة.</translation>
    </message>
    <message>
        <source>Lists the reports of a machine.</source>
        <translation>يسرد تقارير ماكينة.</translation>
    </message>
    <message>
        <source>Shows a report with the names of that version.</source>
        <translation>يعرض تقريرًا بأسماء ذلك الإصدار.</translation>
    </message>
    <message>
        <source>cannot read %1: %2</source>
        <translation>تتعذر قراءة %1: %2</translation>
    </message>
    <message>
        <source>it is not a crash report</source>
        <translation>ليس تقرير انهيار</translation>
    </message>
    <message>
        <source>it is a crash report of another version</source>
        <translation>إنه تقرير انهيار من إصدار آخر</translation>
    </message>
    <message>
        <source>incomplete</source>
        <translation>غير مكتمل</translation>
    </message>
    <message>
        <source>the report is cut or damaged</source>
        <translation>التقرير مقطوع أو تالف</translation>
    </message>
    <message>
        <source>signal</source>
        <translation>الإشارة</translation>
    </message>
    <message>
        <source>reason</source>
        <translation>السبب</translation>
    </message>
    <message>
        <source>address</source>
        <translation>العنوان</translation>
    </message>
    <message>
        <source>time</source>
        <translation>الوقت</translation>
    </message>
    <message>
        <source>running for</source>
        <translation>عمل مدة</translation>
    </message>
    <message>
        <source>started</source>
        <translation>البدء</translation>
    </message>
    <message>
        <source>program</source>
        <translation>البرنامج</translation>
    </message>
    <message>
        <source>%1 (process %2)</source>
        <translation>%1 (العملية %2)</translation>
    </message>
    <message>
        <source>application</source>
        <translation>التطبيق</translation>
    </message>
    <message>
        <source>library</source>
        <translation>المكتبة</translation>
    </message>
    <message>
        <source>boot</source>
        <translation>الإقلاع</translation>
    </message>
    <message>
        <source>thread %1 %2, crashed</source>
        <translation>الخيط %1 %2، انهار</translation>
    </message>
    <message>
        <source>thread %1 %2</source>
        <translation>الخيط %1 %2</translation>
    </message>
    <message>
        <source>no answer</source>
        <translation>لا جواب</translation>
    </message>
    <message>
        <source>inlined into %1</source>
        <translation>مضمّنة في %1</translation>
    </message>
    <message>
        <source>last tick %1 ms before</source>
        <translation>آخر نبضة قبل ذلك بـ %1 م.ث</translation>
    </message>
    <message>
        <source>monitored threads</source>
        <translation>الخيوط المراقبة</translation>
    </message>
    <message>
        <source>last lines of the log</source>
        <translation>آخر أسطر السجل</translation>
    </message>
    <message>
        <source>registers</source>
        <translation>المسجلات</translation>
    </message>
    <message>
        <source>modules</source>
        <translation>الوحدات</translation>
    </message>
    <message>
        <source>--require is checksum or sha1</source>
        <translation>--require هو checksum أو sha1</translation>
    </message>
    <message>
        <source>--protection is off, checksum or sha1</source>
        <translation>--protection هو off أو checksum أو sha1</translation>
    </message>
    <message>
        <source>--compression is smaller, forced or off</source>
        <translation>--compression هو smaller أو forced أو off</translation>
    </message>
    <message>
        <source>--metadata takes ASCII only: anything else would be read back changed</source>
        <translation>لا يقبل --metadata إلا ASCII: كل ما عداه سيُقرأ متغيرًا</translation>
    </message>
    <message>
        <source>Encrypts and decrypts files, and shows what their header says.

OUT appears when it is complete. Compression, a checksum and pipes need memory for several times the size of the file; all else is streamed. The key, 16 hexadecimal digits, comes from --key-file or from the environment variable ZEL_KEY.

The flags of a file are not protected: one that has lost them is decrypted without a check, into garbage, and the program says only that nothing was checked. --require refuses such a file.</source>
        <translation>يشفر الملفات ويفك تشفيرها، ويعرض ما في ترويستها.

يظهر OUT عند اكتماله. يحتاج الضغط والمجموع الاختباري والأنابيب إلى ذاكرة تبلغ أضعاف حجم الملف؛ وكل ما عدا ذلك يعالَج تدفقًا. المفتاح السري، وهو 16 رقمًا ستعشريًا، من --key-file أو من متغير البيئة ZEL_KEY.

أعلام الملف غير محمية: الملف الذي فقدها يُفك تشفيره دون تحقق إلى بيانات لا معنى لها، ولا يقول البرنامج إلا أنه لم يُتحقق من شيء. يرفض --require مثل هذا الملف.</translation>
    </message>
    <message>
        <source>Encrypts, and checks what it wrote by decrypting it.</source>
        <translation>يشفر، ويتحقق مما كتبه بفك تشفيره.</translation>
    </message>
    <message>
        <source>Decrypts.</source>
        <translation>يفك التشفير.</translation>
    </message>
    <message>
        <source>Shows version, flags, metadata, the number of bytes in front of the payload and where the digest is; needs no key.</source>
        <translation>يعرض الإصدار والأعلام والبيانات الوصفية وعدد البايتات قبل المحتوى وموضع البصمة؛ ولا يحتاج إلى مفتاح سري.</translation>
    </message>
    <message>
        <source>A file, or &quot;-&quot; for the standard input</source>
        <translation>ملف، أو &quot;-&quot; للدخل القياسي</translation>
    </message>
    <message>
        <source>A file, or &quot;-&quot; for the standard output</source>
        <translation>ملف، أو &quot;-&quot; للخرج القياسي</translation>
    </message>
    <message>
        <source>Reads the key from FILE.</source>
        <translation>يقرأ المفتاح السري من FILE.</translation>
    </message>
    <message>
        <source>Puts a readable ASCII text into the header.</source>
        <translation>يضع نص ASCII مقروءًا في الترويسة.</translation>
    </message>
    <message>
        <source>What a decryption checks; sha1 unless given.</source>
        <translation>ما يتحقق منه فك التشفير؛ sha1 إن لم يُعطَ.</translation>
    </message>
    <message>
        <source>smaller compresses where it pays; off unless given.</source>
        <translation>smaller يضغط حيث يفيد الضغط؛ off إن لم يُعطَ.</translation>
    </message>
    <message>
        <source>Does not encipher.</source>
        <translation>لا يشفر.</translation>
    </message>
    <message>
        <source>The same input gives the same output each time.</source>
        <translation>يعطي الدخل نفسه الخرج نفسه كل مرة.</translation>
    </message>
    <message>
        <source>Does not stream.</source>
        <translation>لا يعالج الملف تدفقًا.</translation>
    </message>
    <message>
        <source>Decrypts only what is checked by this.</source>
        <translation>لا يفك إلا تشفير ما يُتحقق منه بهذا.</translation>
    </message>
    <message>
        <source>Prints the info as one JSON object.</source>
        <translation>يطبع المعلومات ككائن JSON واحد.</translation>
    </message>
    <message>
        <source>OUT is complete, or the header was shown.</source>
        <translation>اكتمل OUT، أو عُرضت الترويسة.</translation>
    </message>
    <message>
        <source>There is no OUT: a file cannot be read or written, is damaged, or the key is missing or wrong.</source>
        <translation>لا يوجد OUT: تتعذر قراءة ملف أو كتابته، أو هو تالف، أو المفتاح السري غائب أو خاطئ.</translation>
    </message>
    <message>
        <source>Encrypts a file.</source>
        <translation>يشفر ملفًا.</translation>
    </message>
    <message>
        <source>Shows what it is.</source>
        <translation>يعرض ما هو.</translation>
    </message>
    <message>
        <source>%1 is not a cyphertext</source>
        <translation>%1 ليس نصًا مشفرًا</translation>
    </message>
    <message>
        <source>the header of %1 is damaged</source>
        <translation>ترويسة %1 تالفة</translation>
    </message>
    <message>
        <source>%1 bytes, too many to be shown</source>
        <translation>%1 من البايتات، أكثر من أن تُعرض</translation>
    </message>
    <message>
        <source>what was written does not decrypt to it</source>
        <translation>ما كُتب لا يُفك إليه</translation>
    </message>
    <message>
        <source>cannot encrypt %1: %2</source>
        <translation>يتعذر تشفير %1: %2</translation>
    </message>
    <message>
        <source>cannot decrypt %1: %2</source>
        <translation>يتعذر فك تشفير %1: %2</translation>
    </message>
    <message>
        <source>it is not a cyphertext</source>
        <translation>ليس نصًا مشفرًا</translation>
    </message>
    <message>
        <source>it is damaged, or the key is another one</source>
        <translation>هو تالف، أو المفتاح السري غيره</translation>
    </message>
    <message>
        <source>it has become shorter meanwhile</source>
        <translation>صار أقصر في هذه الأثناء</translation>
    </message>
    <message>
        <source>cannot write %1: %2</source>
        <translation>تتعذر كتابة %1: %2</translation>
    </message>
    <message>
        <source>it has no SHA-1 to check</source>
        <translation>ليس له SHA-1 للتحقق منه</translation>
    </message>
    <message>
        <source>it has no checksum to check</source>
        <translation>ليس له مجموع اختباري للتحقق منه</translation>
    </message>
    <message>
        <source>cannot check %1: %2</source>
        <translation>تتعذر مراجعة %1: %2</translation>
    </message>
    <message>
        <source>encrypting</source>
        <translation>تشفير</translation>
    </message>
    <message>
        <source>decrypting</source>
        <translation>فك التشفير</translation>
    </message>
    <message>
        <source>writing %1 would lose the input or the key</source>
        <translation>كتابة %1 ستُضيّع الدخل أو المفتاح السري</translation>
    </message>
    <message>
        <source>Cannot allocate memory</source>
        <translation>الذاكرة لا تكفي</translation>
    </message>
    <message>
        <source>%1 has no checksum and no SHA-1: nothing was checked</source>
        <translation>ليس لـ %1 مجموع اختباري ولا SHA-1: لم يُتحقق من شيء</translation>
    </message>
    <message>
        <source>%1 holds no key of 16 hexadecimal digits</source>
        <translation>لا يحتوي %1 على مفتاح سري من 16 رقمًا ستعشريًا</translation>
    </message>
    <message>
        <source>a key is missing: --key-file or the environment variable ZEL_KEY</source>
        <translation>ينقص مفتاح سري: --key-file أو متغير البيئة ZEL_KEY</translation>
    </message>
    <message>
        <source>the environment variable ZEL_KEY holds no key of 16 hexadecimal digits</source>
        <translation>لا يحتوي متغير البيئة ZEL_KEY على مفتاح سري من 16 رقمًا ستعشريًا</translation>
    </message>
    <message>
        <source>%1 is not a switch, and not in %2</source>
        <translation>%1 ليس مفتاحًا وليس في %2</translation>
    </message>
    <message>
        <source>%1 has no value</source>
        <translation>ليس لـ %1 قيمة</translation>
    </message>
    <message>
        <source>a line of the file cannot hold the name &quot;%1&quot;</source>
        <translation>لا يتسع سطر من الملف للاسم &quot;%1&quot;</translation>
    </message>
    <message>
        <source>%1 is not a switch; --force sets it anyway</source>
        <translation>%1 ليس مفتاحًا؛ يضبطه --force رغم ذلك</translation>
    </message>
    <message>
        <source>a line of the file cannot hold the value &quot;%1&quot; of %2</source>
        <translation>لا يتسع سطر من الملف للقيمة &quot;%1&quot; لـ %2</translation>
    </message>
    <message>
        <source>What the machine gets, and whether from the file, from the environment (here that of zelctl) or from the build (define). A value that the machine would refuse is marked as invalid.</source>
        <translation>ما تحصل عليه الماكينة، وهل هو من الملف أو من البيئة (هنا بيئة zelctl) أو من النسخة (define). القيمة التي سترفضها الماكينة تحمل العلامة invalid.</translation>
    </message>
    <message>
        <source>The value that the machine gets.</source>
        <translation>القيمة التي تحصل عليها الماكينة.</translation>
    </message>
    <message>
        <source>Changes one line of the file, or appends it; creates a missing file. After &quot;--&quot; a VALUE may begin with &quot;-&quot;.</source>
        <translation>يغير سطرًا من الملف أو يلحقه به؛ وينشئ الملف إن لم يوجد. بعد &quot;--&quot; يجوز أن يبدأ VALUE بـ &quot;-&quot;.</translation>
    </message>
    <message>
        <source>Removes the lines of that name.</source>
        <translation>يزيل الأسطر التي لها هذا الاسم.</translation>
    </message>
    <message>
        <source>All switches: name, type, category, flags (1 is visible, 2 and 4 are the application&apos;s), build default, description.</source>
        <translation>كل المفاتيح: الاسم والنوع والفئة والأعلام (1 ظاهر، و2 و4 للتطبيق) وقيمة النسخة والوصف.</translation>
    </message>
    <message>
        <source>The environment file</source>
        <translation>ملف البيئة</translation>
    </message>
    <message>
        <source>The name of a switch</source>
        <translation>اسم مفتاح</translation>
    </message>
    <message>
        <source>Also sets a name that is not a known switch.</source>
        <translation>يضبط أيضًا اسمًا ليس مفتاحًا معروفًا هنا.</translation>
    </message>
    <message>
        <source>Does not fit the list or the catalogue into the terminal.</source>
        <translation>لا يلائم القائمة أو الفهرس مع الطرفية.</translation>
    </message>
    <message>
        <source>Prints the list, the value or the catalogue as one JSON object.</source>
        <translation>يطبع القائمة أو القيمة أو الفهرس ككائن JSON واحد.</translation>
    </message>
    <message>
        <source>The value was printed, or the file holds it.</source>
        <translation>طُبعت القيمة، أو هي في الملف.</translation>
    </message>
    <message>
        <source>The file cannot be read or written, the name is unknown, or the machine would refuse a value.</source>
        <translation>تتعذر قراءة الملف أو كتابته، أو الاسم مجهول، أو سترفض الماكينة قيمة.</translation>
    </message>
    <message>
        <source>Shows what a machine would get.</source>
        <translation>يعرض ما ستحصل عليه ماكينة.</translation>
    </message>
    <message>
        <source>Sets a switch.</source>
        <translation>يضبط مفتاحًا.</translation>
    </message>
    <message>
        <source>the name is empty</source>
        <translation>الاسم فارغ</translation>
    </message>
    <message>
        <source>the environment: %1</source>
        <translation>البيئة: %1</translation>
    </message>
    <message>
        <source>%1 holds no zel_events.log</source>
        <translation>لا يحتوي %1 على zel_events.log</translation>
    </message>
    <message>
        <source>there are event files in %1; give one of these folders</source>
        <translation>توجد ملفات أحداث في %1؛ أعطِ أحد هذه المجلدات</translation>
    </message>
    <message>
        <source> and in </source>
        <translation> وفي </translation>
    </message>
    <message>
        <source>the files in %1 grow faster than they can be read</source>
        <translation>تنمو الملفات في %1 أسرع من أن تُقرأ</translation>
    </message>
    <message>
        <source>the files in %1 rotate faster than they can be read</source>
        <translation>تتدوّر الملفات في %1 أسرع من أن تُقرأ</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a date of the form %2</source>
        <translation>&quot;%1&quot; ليس تاريخًا بالصيغة %2</translation>
    </message>
    <message>
        <source>--from is after --to</source>
        <translation>--from بعد --to</translation>
    </message>
    <message>
        <source>unknown kind &quot;%1&quot;; the kinds are %2</source>
        <translation>نوع مجهول &quot;%1&quot;؛ الأنواع هي %2</translation>
    </message>
    <message>
        <source>--page needs a number from 0 on</source>
        <translation>يحتاج --page إلى عدد ابتداءً من 0</translation>
    </message>
    <message>
        <source>--per-page needs a number from 1 on</source>
        <translation>يحتاج --per-page إلى عدد ابتداءً من 1</translation>
    </message>
    <message>
        <source>page %1 of %2</source>
        <translation>الصفحة %1 من %2</translation>
    </message>
    <message>
        <source>there is no page %1; no event matches</source>
        <translation>لا توجد صفحة %1؛ لا حدث يطابق</translation>
    </message>
    <message>
        <source>there is no page %1; the last one is %2</source>
        <translation>لا توجد صفحة %1؛ آخر صفحة هي %2</translation>
    </message>
    <message>
        <source>%1; events are missing</source>
        <translation>%1؛ تنقص أحداث</translation>
    </message>
    <message>
        <source>Prints the events in DIR/zel_events.log.1 and DIR/zel_events.log, oldest first, a page at a time.</source>
        <translation>يطبع الأحداث في DIR/zel_events.log.1 وDIR/zel_events.log، الأقدم أولًا، صفحة صفحة.</translation>
    </message>
    <message>
        <source>The folder of the event files, or one above it</source>
        <translation>مجلد ملفات الأحداث، أو مجلد فوقه</translation>
    </message>
    <message>
        <source>A kind of events</source>
        <translation>نوع من الأحداث</translation>
    </message>
    <message>
        <source>Only events of these kinds, separated by commas; may be given several times.</source>
        <translation>أحداث هذه الأنواع فقط، مفصولة بفواصل؛ يمكن تكرار الخيار.</translation>
    </message>
    <message>
        <source>Only events of this day and later.</source>
        <translation>أحداث هذا اليوم وما بعده فقط.</translation>
    </message>
    <message>
        <source>Only events of this day and earlier.</source>
        <translation>أحداث هذا اليوم وما قبله فقط.</translation>
    </message>
    <message>
        <source>Which page; 0, the default, has the newest events.</source>
        <translation>أي صفحة؛ الصفحة 0، وهي المبدئية، فيها أحدث الأحداث.</translation>
    </message>
    <message>
        <source>How many events make a page; 20 by default.</source>
        <translation>كم حدثًا في الصفحة؛ 20 مبدئيًا.</translation>
    </message>
    <message>
        <source>Prints one JSON object with all events of the page.</source>
        <translation>يطبع كائن JSON واحدًا بكل أحداث الصفحة.</translation>
    </message>
    <message>
        <source>Continues with new events after the page, until interrupted; with --json one object for each.</source>
        <translation>يواصل بعد الصفحة بالأحداث الجديدة حتى المقاطعة؛ ومع --json كائنًا لكل حدث.</translation>
    </message>
    <message>
        <source>The page was printed.</source>
        <translation>طُبعت الصفحة.</translation>
    </message>
    <message>
        <source>There is no such folder or page, or a file could not be read to its end; the other events are printed.</source>
        <translation>لا يوجد مثل هذا المجلد أو هذه الصفحة، أو تعذرت قراءة ملف حتى نهايته؛ وطُبعت الأحداث الأخرى.</translation>
    </message>
    <message>
        <source>The events of a machine.</source>
        <translation>أحداث ماكينة.</translation>
    </message>
    <message>
        <source>Shows who entered the menu in these days.</source>
        <translation>يعرض من دخل القائمة في هذه الأيام.</translation>
    </message>
    <message>
        <source>Lists the commands.</source>
        <translation>يسرد الأوامر.</translation>
    </message>
    <message>
        <source>Prints the version.</source>
        <translation>يذكر الإصدار.</translation>
    </message>
    <message>
        <source>no folder %1</source>
        <translation>لا يوجد المجلد %1</translation>
    </message>
    <message>
        <source>%1 is a file; give its folder, which is %2</source>
        <translation>%1 ملف؛ أعطِ مجلده، وهو %2</translation>
    </message>
    <message>
        <source>cannot read the folder %1</source>
        <translation>تتعذر قراءة المجلد %1</translation>
    </message>
    <message>
        <source>%1 is a folder; give the name of a file in it</source>
        <translation>%1 مجلد؛ أعطِ اسم ملف فيه</translation>
    </message>
    <message>
        <source>Explains a command as its option --help does, or lists all commands.</source>
        <translation>يشرح أمرًا كما يفعل خياره --help، أو يسرد كل الأوامر.</translation>
    </message>
    <message>
        <source>The command</source>
        <translation>الأمر</translation>
    </message>
    <message>
        <source>Writes the man pages of all commands into DIR.</source>
        <translation>يكتب صفحات دليل كل الأوامر في DIR.</translation>
    </message>
    <message>
        <source>The help was printed, or written.</source>
        <translation>طُبعت المساعدة أو كُتبت.</translation>
    </message>
    <message>
        <source>The help could not be written.</source>
        <translation>تعذرت كتابة المساعدة.</translation>
    </message>
    <message>
        <source>The date of the man pages, in seconds since 1970; today if it is not set.</source>
        <translation>تاريخ صفحات الدليل بالثواني منذ 1970؛ واليوم إن لم يُضبط.</translation>
    </message>
    <message>
        <source>Explains a command of two words.</source>
        <translation>يشرح أمرًا من كلمتين.</translation>
    </message>
    <message>
        <source>there is no command &quot;%1&quot;; &quot;zelctl help&quot; lists the commands</source>
        <translation>لا يوجد أمر &quot;%1&quot;؛ &quot;zelctl help&quot; يسرد الأوامر</translation>
    </message>
    <message>
        <source>line %1: %2</source>
        <translation>السطر %1: %2</translation>
    </message>
    <message>
        <source>Prints hexadecimal text in one form, or the bytes that it means, or the text for bytes. The text may have letters of either case, &quot;-&quot;, &quot;:&quot; and 0x anywhere; white space is allowed at its ends.</source>
        <translation>يطبع نصًا ستعشريًا بصيغة واحدة، أو البايتات التي يعنيها، أو النص الذي تعنيه بايتات. يجوز في النص حروف كبيرة وصغيرة، و&quot;-&quot; و&quot;:&quot; و0x في أي موضع؛ والمسافات مسموحة في طرفيه.</translation>
    </message>
    <message>
        <source>The text. &quot;-&quot; is the standard input: each line is a text of its own, blank ones stay blank</source>
        <translation>النص. &quot;-&quot; هو الدخل القياسي: كل سطر نص مستقل، والأسطر الفارغة تبقى فارغة</translation>
    </message>
    <message>
        <source>Begins each text with PREFIX, as it is.</source>
        <translation>يبدأ كل نص بـ PREFIX كما هو.</translation>
    </message>
    <message>
        <source>Puts SEPARATOR, converted to upper case, between the bytes; &quot;-&quot; unless given.</source>
        <translation>يفصل البايتات بـ SEPARATOR، بحروف كبيرة؛ &quot;-&quot; إن لم يُعطَ.</translation>
    </message>
    <message>
        <source>Takes TEXT, or the standard input as a whole, for the bytes themselves.</source>
        <translation>يأخذ TEXT، أو الدخل القياسي كله، على أنه البايتات نفسها.</translation>
    </message>
    <message>
        <source>Prints the bytes of all texts, one after the other.</source>
        <translation>يطبع بايتات كل النصوص، واحدًا بعد الآخر.</translation>
    </message>
    <message>
        <source>Prints one JSON object for each text.</source>
        <translation>يطبع كائن JSON واحدًا لكل نص.</translation>
    </message>
    <message>
        <source>All texts were converted.</source>
        <translation>حُولت كل النصوص.</translation>
    </message>
    <message>
        <source>A text is not hexadecimal, or the input is too large.</source>
        <translation>نص ليس ستعشريًا، أو الدخل كبير جدًا.</translation>
    </message>
    <message>
        <source>Prints 0xDE-AD-BE-EF.</source>
        <translation>يطبع 0xDE-AD-BE-EF.</translation>
    </message>
    <message>
        <source>Prints the bytes of a file.</source>
        <translation>يطبع بايتات ملف.</translation>
    </message>
    <message>
        <source>Writes HI, without a line feed.</source>
        <translation>يكتب HI دون محرف سطر جديد.</translation>
    </message>
    <message>
        <source>--to-bytes cannot be combined with other options</source>
        <translation>لا يجتمع --to-bytes مع خيار آخر</translation>
    </message>
    <message>
        <source>bytes are not written to a terminal; redirect the output</source>
        <translation>قد تتحكم البايتات في الطرفية، فأرسلها إلى ملف</translation>
    </message>
    <message>
        <source>the text for so many bytes does not fit into the memory</source>
        <translation>نص هذا العدد من البايتات لا تتسع له الذاكرة</translation>
    </message>
    <message>
        <source>the kernel log has ended</source>
        <translation>انتهى سجل النواة</translation>
    </message>
    <message>
        <source>1 record was overwritten before it was read</source>
        <translation>كُتب فوق سجل واحد قبل قراءته</translation>
    </message>
    <message numerus="yes">
        <source>%n records were overwritten before they were read</source>
        <translation>
            <numerusform>لم يُكتب فوق أي سجل قبل قراءته</numerusform>
            <numerusform>كُتب فوق سجل واحد قبل قراءته</numerusform>
            <numerusform>كُتب فوق سجلين قبل قراءتهما</numerusform>
            <numerusform>كُتب فوق %n سجلات قبل قراءتها</numerusform>
            <numerusform>كُتب فوق %n سجلًا قبل قراءتها</numerusform>
            <numerusform>كُتب فوق %n سجل قبل قراءتها</numerusform>
        </translation>
    </message>
    <message>
        <source>the kernel log has no end</source>
        <translation>ليس لسجل النواة نهاية</translation>
    </message>
    <message>
        <source>Prints the log of the running kernel with time, level and facility.</source>
        <translation>يطبع سجل النواة العاملة مع الوقت والمستوى والمرفق.</translation>
    </message>
    <message>
        <source>A level</source>
        <translation>مستوى</translation>
    </message>
    <message>
        <source>Facilities</source>
        <translation>المرافق</translation>
    </message>
    <message>
        <source>Only this level and more severe ones.</source>
        <translation>هذا المستوى وما هو أشد منه فقط.</translation>
    </message>
    <message>
        <source>Only these facilities, separated by commas; may be given several times.</source>
        <translation>هذه المرافق فقط، مفصولة بفواصل؛ يمكن إعطاؤه عدة مرات.</translation>
    </message>
    <message>
        <source>Continues with new records, until interrupted.</source>
        <translation>يواصل بالسجلات الجديدة حتى المقاطعة.</translation>
    </message>
    <message>
        <source>Prints one JSON object for each record.</source>
        <translation>يطبع كائن JSON واحدًا لكل سجل.</translation>
    </message>
    <message>
        <source>The records were printed.</source>
        <translation>طُبعت السجلات.</translation>
    </message>
    <message>
        <source>The log cannot be read; the kernel may show it to root only.</source>
        <translation>تتعذر قراءة السجل؛ وقد لا تعرضه النواة إلا لـ root.</translation>
    </message>
    <message>
        <source>The log of the kernel.</source>
        <translation>سجل النواة.</translation>
    </message>
    <message>
        <source>Follows what the kernel warns of.</source>
        <translation>يتابع تحذيرات النواة.</translation>
    </message>
    <message>
        <source>unknown level &quot;%1&quot;; the levels are %2</source>
        <translation>مستوى مجهول &quot;%1&quot;؛ المستويات هي %2</translation>
    </message>
    <message>
        <source>unknown facility &quot;%1&quot;; the facilities are %2</source>
        <translation>مرفق مجهول &quot;%1&quot;؛ المرافق هي %2</translation>
    </message>
    <message>
        <source>tar cannot be started</source>
        <translation>يتعذر تشغيل tar</translation>
    </message>
    <message>
        <source>tar finds it damaged</source>
        <translation>يجده tar تالفًا</translation>
    </message>
    <message>
        <source>the machine lost 1 line in this period</source>
        <translation>فقدت الماكينة سطرًا واحدًا في هذه الفترة</translation>
    </message>
    <message numerus="yes">
        <source>the machine lost %n lines in this period</source>
        <translation>
            <numerusform>لم تفقد الماكينة أي سطر في هذه الفترة</numerusform>
            <numerusform>فقدت الماكينة سطرًا واحدًا في هذه الفترة</numerusform>
            <numerusform>فقدت الماكينة سطرين في هذه الفترة</numerusform>
            <numerusform>فقدت الماكينة %n أسطر في هذه الفترة</numerusform>
            <numerusform>فقدت الماكينة %n سطرًا في هذه الفترة</numerusform>
            <numerusform>فقدت الماكينة %n سطر في هذه الفترة</numerusform>
        </translation>
    </message>
    <message>
        <source>%1; lines are missing</source>
        <translation>%1؛ تنقص أسطر</translation>
    </message>
    <message>
        <source>%1 rotates faster than it can be read</source>
        <translation>يتدوّر %1 أسرع من أن يُقرأ</translation>
    </message>
    <message>
        <source>lines do not name their module; &quot;%1&quot; is neither a file (%2) nor a kind of events (%3)</source>
        <translation>لا تذكر الأسطر وحدتها؛ &quot;%1&quot; ليس ملفًا (%2) ولا نوعًا من الأحداث (%3)</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a time of the form dd/MM/yyyy or dd/MM/yyyy hh:mm or dd/MM/yyyy hh:mm:ss</source>
        <translation>&quot;%1&quot; ليس وقتًا بالصيغة dd/MM/yyyy أو dd/MM/yyyy hh:mm أو dd/MM/yyyy hh:mm:ss</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a regular expression: %2</source>
        <translation>&quot;%1&quot; ليس تعبيرًا نمطيًا: %2</translation>
    </message>
    <message>
        <source>--last needs a number from 0 on</source>
        <translation>يحتاج --last إلى عدد ابتداءً من 0</translation>
    </message>
    <message>
        <source>--color is auto, always or never</source>
        <translation>--color هو auto أو always أو never</translation>
    </message>
    <message>
        <source>Prints the log files in DIR, with their predecessors, merged by time. DIR has the files, or the folders debug and events, or logs with these two.

A line that names no level counts as Event in the event files, and as Info in others. Lines do not name their module.</source>
        <translation>يطبع ملفات السجل في DIR مع سابقاتها مدموجة حسب الوقت. في DIR الملفات، أو المجلدان debug وevents، أو logs وفيه هذان.

السطر الذي لا يذكر مستوى يُعد Event في ملفات الأحداث وInfo في غيرها. لا تذكر الأسطر وحدتها.</translation>
    </message>
    <message>
        <source>Writes the lines that killed processes have left; &quot;zelctl help log recover&quot; explains it.</source>
        <translation>يكتب الأسطر التي خلفتها عمليات أُنهيت؛ يشرحه &quot;zelctl help log recover&quot;.</translation>
    </message>
    <message>
        <source>The folder of the log files</source>
        <translation>مجلد ملفات السجل</translation>
    </message>
    <message>
        <source>A file, or a kind of events</source>
        <translation>ملف، أو نوع من الأحداث</translation>
    </message>
    <message>
        <source>Only lines of this level and more severe ones.</source>
        <translation>أسطر هذا المستوى وما هو أسوأ منه فقط.</translation>
    </message>
    <message>
        <source>Only lines of these files or kinds of events, separated by commas; may be given several times.</source>
        <translation>أسطر هذه الملفات أو أنواع الأحداث فقط، مفصولة بفواصل؛ يمكن تكرار الخيار.</translation>
    </message>
    <message>
        <source>Only lines that contain this regular expression.</source>
        <translation>الأسطر التي تحتوي على هذا التعبير النمطي فقط.</translation>
    </message>
    <message>
        <source>Only lines of this time and later.</source>
        <translation>أسطر هذا الوقت وما بعده فقط.</translation>
    </message>
    <message>
        <source>Only lines of this time and earlier, up to the end of this day, minute or second.</source>
        <translation>أسطر هذا الوقت وما قبله فقط، حتى نهاية هذا اليوم أو الدقيقة أو الثانية.</translation>
    </message>
    <message>
        <source>Only the last N of these lines.</source>
        <translation>آخر N من هذه الأسطر فقط.</translation>
    </message>
    <message>
        <source>Continues with new lines, also after a rotation, until interrupted.</source>
        <translation>يواصل بالأسطر الجديدة، حتى بعد تدوير الملفات، إلى أن يُقاطع.</translation>
    </message>
    <message>
        <source>Prints one JSON object for each line.</source>
        <translation>يطبع كائن JSON في كل سطر.</translation>
    </message>
    <message>
        <source>Colours the lines by their levels; auto unless given.</source>
        <translation>يلون الأسطر حسب مستوياتها؛ auto إن لم يُعطَ.</translation>
    </message>
    <message>
        <source>The lines were printed.</source>
        <translation>طُبعت الأسطر.</translation>
    </message>
    <message>
        <source>There are no log files, or one could not be read to its end; the other lines are printed.</source>
        <translation>لا توجد ملفات سجل، أو تعذرت قراءة أحدها حتى نهايته؛ وطُبعت الأسطر الأخرى.</translation>
    </message>
    <message>
        <source>The program that shows the lines on a terminal; empty for none, less if it is not set.</source>
        <translation>البرنامج الذي يعرض الأسطر على طرفية؛ فارغ لعدم استخدامه، وless إن لم يُضبط.</translation>
    </message>
    <message>
        <source>Turns off the colours of --color auto.</source>
        <translation>يوقف ألوان --color auto.</translation>
    </message>
    <message>
        <source>Turns them off, too, if it is dumb.</source>
        <translation>يوقفها أيضًا إذا كان dumb.</translation>
    </message>
    <message>
        <source>Shows what went wrong since three o&apos;clock.</source>
        <translation>يعرض ما حدث من خطأ منذ الساعة الثالثة.</translation>
    </message>
    <message>
        <source>Follows what the log says of the coin changer.</source>
        <translation>يتابع ما يقوله السجل عن معيد النقود.</translation>
    </message>
    <message>
        <source>a command is missing; &quot;zelctl --help&quot; lists the commands</source>
        <translation>ينقص أمر؛ &quot;zelctl --help&quot; يسرد الأوامر</translation>
    </message>
    <message>
        <source>unknown command &quot;%1&quot;; &quot;zelctl --help&quot; lists the commands</source>
        <translation>أمر مجهول &quot;%1&quot;؛ &quot;zelctl --help&quot; يسرد الأوامر</translation>
    </message>
    <message>
        <source>SYNOPSIS</source>
        <translation>الموجز</translation>
    </message>
    <message>
        <source>DESCRIPTION</source>
        <translation>الوصف</translation>
    </message>
    <message>
        <source>zelctl works with the files of a machine that uses the library ZelTools: its logs, reports, switches and encrypted files; and with the simulators beside it. Each command has a page of its own.</source>
        <translation>يعمل zelctl على ملفات ماكينة تستخدم المكتبة ZelTools: سجلاتها وتقاريرها ومفاتيحها وملفاتها المشفرة، وعلى المحاكيات التي بجانبها. لكل أمر صفحة خاصة به.</translation>
    </message>
    <message>
        <source>OPTIONS</source>
        <translation>الخيارات</translation>
    </message>
    <message>
        <source>EXIT STATUS</source>
        <translation>حالة الخروج</translation>
    </message>
    <message>
        <source>Companion of the library ZelTools.</source>
        <translation>البرنامج المرافق للمكتبة ZelTools.</translation>
    </message>
    <message>
        <source>SEE ALSO</source>
        <translation>انظر أيضًا</translation>
    </message>
    <message>
        <source>ENVIRONMENT</source>
        <translation>البيئة</translation>
    </message>
    <message>
        <source>FILES</source>
        <translation>الملفات</translation>
    </message>
    <message>
        <source>EXAMPLES</source>
        <translation>أمثلة</translation>
    </message>
    <message>
        <source>it is too large</source>
        <translation>هو كبير جدًا</translation>
    </message>
    <message>
        <source>it is a folder, not a file</source>
        <translation>هو مجلد لا ملف</translation>
    </message>
    <message>
        <source>it is not a file</source>
        <translation>ليس ملفًا</translation>
    </message>
    <message>
        <source>the standard input</source>
        <translation>الدخل القياسي</translation>
    </message>
    <message>
        <source>Writes to the log files below DIR what killed processes with buffered logging have left in their rings. The next start of the application does the same. Lines without a file go to stderr.</source>
        <translation>يكتب في ملفات السجل تحت DIR ما خلفته عمليات أُنهيت، وسجلها مخزن مؤقتًا، في مخازنها الحلقية. يفعل البدء التالي للتطبيق الشيء نفسه. الأسطر التي بلا ملف تذهب إلى stderr.</translation>
    </message>
    <message>
        <source>Looks for rings in FOLDER, too; may be given several times.</source>
        <translation>يبحث عن مخازن حلقية في FOLDER أيضًا؛ يمكن إعطاؤه عدة مرات.</translation>
    </message>
    <message>
        <source>Prints one JSON object with the number of lines.</source>
        <translation>يطبع كائن JSON واحدًا بعدد الأسطر.</translation>
    </message>
    <message>
        <source>The lines were written.</source>
        <translation>كُتبت الأسطر.</translation>
    </message>
    <message>
        <source>There is no such folder, or a ring or a log file has a problem.</source>
        <translation>لا يوجد مثل هذا المجلد، أو في مخزن حلقي أو ملف سجل مشكلة.</translation>
    </message>
    <message>
        <source>Recovers the lines of a machine.</source>
        <translation>يستعيد أسطر ماكينة.</translation>
    </message>
    <message>
        <source>1 line recovered</source>
        <translation>استُعيد سطر واحد</translation>
    </message>
    <message numerus="yes">
        <source>%n lines recovered</source>
        <translation>
            <numerusform>لم يُستعد أي سطر</numerusform>
            <numerusform>استُعيد سطر واحد</numerusform>
            <numerusform>استُعيد سطران</numerusform>
            <numerusform>استُعيدت %n أسطر</numerusform>
            <numerusform>استُعيد %n سطرًا</numerusform>
            <numerusform>استُعيد %n سطر</numerusform>
        </translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a value for %2, which is 0 or 1</source>
        <translation>&quot;%1&quot; ليس قيمة لـ %2، وقيمته 0 أو 1</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a value for %2, which is of type %3</source>
        <translation>&quot;%1&quot; ليس قيمة لـ %2، ونوعه %3</translation>
    </message>
    <message>
        <source>the machine reads in the order of the names and stops before %1: %2</source>
        <translation>تقرأ الماكينة بترتيب الأسماء وتتوقف قبل %1: %2</translation>
    </message>
    <message>
        <source>--%1 is only valid with %2</source>
        <translation>--%1 يخص %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not the address of a link</source>
        <translation>&quot;%1&quot; ليس عنوان وصلة</translation>
    </message>
    <message>
        <source>--as is simulator or machine</source>
        <translation>--as هو simulator أو machine</translation>
    </message>
    <message>
        <source>--timeout is a time such as 1.5s or 2min</source>
        <translation>--timeout زمن مثل 1.5s أو 2min</translation>
    </message>
    <message>
        <source>Plays the simulator&apos;s end of a link to a machine, and records and replays links.</source>
        <translation>يؤدي دور المحاكي في وصلة إلى ماكينة، ويسجل الوصلات ويعيد تشغيلها.</translation>
    </message>
    <message>
        <source>Answers a machine as the rows of a script say; ADDRESS is tcpserver/127.0.0.1/0 unless given.</source>
        <translation>يجيب ماكينة كما تقول أسطر نص برمجي؛ ADDRESS هو tcpserver/127.0.0.1/0 إن لم يُعطَ.</translation>
    </message>
    <message>
        <source>Stands between a machine and the simulator at ADDRESS, and records both ways with times. FILE is emptied first.</source>
        <translation>يقف بين ماكينة والمحاكي عند ADDRESS، ويسجل الاتجاهين مع الأوقات. يُفرَّغ FILE أولًا.</translation>
    </message>
    <message>
        <source>Plays one side of a recording, and reports the first difference of what the other side does.</source>
        <translation>يشغل طرفًا من تسجيل، ويبلغ عن أول اختلاف فيما يفعله الطرف الآخر.</translation>
    </message>
    <message>
        <source>The script of a simulator</source>
        <translation>النص البرمجي لمحاكٍ</translation>
    </message>
    <message>
        <source>The recording</source>
        <translation>التسجيل</translation>
    </message>
    <message>
        <source>tcpserver/IP/PORT or unixserver/PATH to listen, tcpclient/IP/PORT or unixclient/PATH to connect. A port 0 lets the system choose; the real one is printed</source>
        <translation>tcpserver/IP/PORT أو unixserver/PATH للإنصات، وtcpclient/IP/PORT أو unixclient/PATH للاتصال. المنفذ 0 يترك الاختيار للنظام؛ ويُطبع المنفذ الفعلي</translation>
    </message>
    <message>
        <source>serve: ends after the first connection; otherwise it serves until interrupted.</source>
        <translation>serve: ينتهي بعد أول اتصال؛ وإلا فيخدم حتى المقاطعة.</translation>
    </message>
    <message>
        <source>record: where the machine is, or where it connects; tcpserver/127.0.0.1/0 unless given.</source>
        <translation>record: أين الماكينة أو إلى أين تتصل؛ tcpserver/127.0.0.1/0 إن لم يُعطَ.</translation>
    </message>
    <message>
        <source>replay: the side to play; simulator unless given.</source>
        <translation>replay: الطرف الذي يُشغل؛ simulator إن لم يُعطَ.</translation>
    </message>
    <message>
        <source>replay: sends at the recorded times; otherwise as soon as it can.</source>
        <translation>replay: يرسل في الأوقات المسجلة؛ وإلا فبأسرع ما يمكن.</translation>
    </message>
    <message>
        <source>replay: how much later than recorded the other side may act, such as 1.5s or 2min; 10s unless given.</source>
        <translation>replay: كم يجوز أن يتأخر الطرف الآخر عما سُجل، مثل 1.5s أو 2min؛ 10s إن لم يُعطَ.</translation>
    </message>
    <message>
        <source>Prints the address as a JSON object.</source>
        <translation>يطبع العنوان ككائن JSON.</translation>
    </message>
    <message>
        <source>serve or record has ended without a problem, or a replay saw no difference.</source>
        <translation>انتهى serve أو record من دون مشكلة، أو لم تجد إعادة التشغيل اختلافًا.</translation>
    </message>
    <message>
        <source>A file or an address cannot be used, or a replay saw a difference or was interrupted.</source>
        <translation>لا يمكن استخدام ملف أو عنوان، أو وجدت إعادة التشغيل اختلافًا أو قوطعت.</translation>
    </message>
    <message>
        <source>Plays a grinder.</source>
        <translation>يؤدي دور مطحنة.</translation>
    </message>
    <message>
        <source>Plays what a simulator did.</source>
        <translation>يعيد ما فعله محاكٍ.</translation>
    </message>
    <message>
        <source>the replay was stopped</source>
        <translation>أُوقفت إعادة التشغيل</translation>
    </message>
    <message>
        <source>the command was interrupted</source>
        <translation>قوطع الأمر</translation>
    </message>
    <message>
        <source>cannot listen on %1: %2</source>
        <translation>يتعذر الإنصات على %1: %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; in &quot;%2&quot; is not a number of a version</source>
        <translation>&quot;%1&quot; في &quot;%2&quot; ليس رقمًا من إصدار</translation>
    </message>
    <message>
        <source>%1 and %2 have different numbers of parts, which the machine warns of; only those that both have decide between &lt; and &gt;</source>
        <translation>لـ %1 و%2 عددان مختلفان من الأجزاء، وتحذر الماكينة من ذلك؛ الأجزاء المشتركة وحدها تحسم بين &lt; و&gt;</translation>
    </message>
    <message>
        <source>Compares two versions, such as 2.9 and 2.10, as the machine does: prints &lt;, = or &gt; as A is to B. For versions of which one begins with the other (1.2 and 1.2.7) the machine says yes to none of these; that is printed as != and explained on stderr.

With one version it prints that in its usual form, with none the version of the library.</source>
        <translation>يقارن إصدارين، مثل 2.9 و2.10، كما تفعل الماكينة: يطبع &lt; أو = أو &gt; حسب علاقة A بـ B. في الإصدارات التي يبدأ أحدها بالآخر (1.2 و1.2.7) لا تقول الماكينة نعم لأي منها؛ فيُطبع != ويُشرح على stderr.

مع إصدار واحد يطبعه بصيغته المعتادة، ودون إصدار يطبع إصدار المكتبة.</translation>
    </message>
    <message>
        <source>A version</source>
        <translation>إصدار</translation>
    </message>
    <message>
        <source>Another version</source>
        <translation>إصدار آخر</translation>
    </message>
    <message>
        <source>The versions were compared, or the version was printed.</source>
        <translation>قورن الإصداران، أو طُبع الإصدار.</translation>
    </message>
    <message>
        <source>A text is not a version.</source>
        <translation>نص ليس إصدارًا.</translation>
    </message>
    <message>
        <source>Prints &lt;.</source>
        <translation>يطبع &lt;.</translation>
    </message>
</context>
</TS>
