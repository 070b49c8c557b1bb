<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ar" sourcelanguage="en">
<context>
    <name>BundlePlaces</name>
    <message>
        <source>Folder of the application</source>
        <translation>مجلد التطبيق</translation>
    </message>
    <message>
        <source>%1 free of %2</source>
        <translation>‏%1 متاحة من %2</translation>
    </message>
    <message>
        <source>Write-protected</source>
        <translation>محمية من الكتابة</translation>
    </message>
    <message>
        <source>No stick</source>
        <translation>لا توجد ذاكرة USB</translation>
    </message>
    <message>
        <source>Plug in a USB stick. It appears here when the system has mounted it below /media, /run/media or /mnt.</source>
        <translation>أدخل ذاكرة USB. تظهر هنا بعد أن يوصلها النظام تحت ‎/media أو ‎/run/media أو ‎/mnt.</translation>
    </message>
</context>
<context>
    <name>BundleProgress</name>
    <message>
        <source>The bundle is complete.</source>
        <translation>الحزمة مكتملة.</translation>
    </message>
    <message>
        <source>Cancelled. No file was left.</source>
        <translation>أُلغيت العملية ولم يبقَ أي ملف.</translation>
    </message>
    <message>
        <source>One file for the factory: log files, events, the kernel log, crash reports, switches without their secrets, versions, and the state of disks and memory.</source>
        <translation>ملف واحد للمصنع: ملفات السجل والأحداث وسجل النواة وتقارير الانهيار والمفاتيح دون أسرارها والإصدارات وحالة الأقراص والذاكرة.</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>‏%1 ٪</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>إلغاء</translation>
    </message>
    <message>
        <source>Create the bundle</source>
        <translation>إنشاء الحزمة</translation>
    </message>
</context>
<context>
    <name>Catalogue</name>
    <message>
        <source>Overview</source>
        <extracomment>The names of pages stand below icons, too, where about ten letters have room.</extracomment>
        <translation>نظرة عامة</translation>
    </message>
    <message>
        <source>Events</source>
        <translation>الأحداث</translation>
    </message>
    <message>
        <source>Log</source>
        <translation>السجل</translation>
    </message>
    <message>
        <source>Switches</source>
        <translation>المفاتيح</translation>
    </message>
    <message>
        <source>Machine</source>
        <translation>الماكينة</translation>
    </message>
    <message>
        <source>Threads</source>
        <translation>الخيوط</translation>
    </message>
    <message>
        <source>Kernel</source>
        <translation>النواة</translation>
    </message>
    <message>
        <source>Files</source>
        <translation>الملفات</translation>
    </message>
    <message>
        <source>Date and time</source>
        <translation>التاريخ والوقت</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>الوقت</translation>
    </message>
    <message>
        <source>Support</source>
        <translation>الدعم</translation>
    </message>
</context>
<context>
    <name>ClockSetting</name>
    <message>
        <source>The clock is set.</source>
        <translation>ضُبطت الساعة.</translation>
    </message>
    <message>
        <source>Day</source>
        <translation>اليوم</translation>
    </message>
    <message>
        <source>Month</source>
        <translation>الشهر</translation>
    </message>
    <message>
        <source>Year</source>
        <translation>السنة</translation>
    </message>
    <message>
        <source>Hour</source>
        <translation>الساعة</translation>
    </message>
    <message>
        <source>Minute</source>
        <translation>الدقيقة</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>تراجع</translation>
    </message>
    <message>
        <source>Set the clock</source>
        <translation>ضبط الساعة</translation>
    </message>
</context>
<context>
    <name>CrashRows</name>
    <message>
        <source>No crash</source>
        <translation>لا يوجد انهيار</translation>
    </message>
    <message>
        <source>The folder has no crash report.</source>
        <translation>لا يوجد في المجلد تقرير انهيار.</translation>
    </message>
    <message>
        <source>The application has not called CrashReports::install().</source>
        <translation>لم يستدعِ التطبيق الدالة CrashReports::install()‎.</translation>
    </message>
    <message>
        <source>Crash reports are off</source>
        <translation>تقارير الانهيار معطّلة</translation>
    </message>
</context>
<context>
    <name>DaysDialog</name>
    <message>
        <source>All days</source>
        <translation>كل الأيام</translation>
    </message>
    <message>
        <source>Today</source>
        <translation>اليوم</translation>
    </message>
    <message>
        <source>Previous month</source>
        <translation>الشهر السابق</translation>
    </message>
    <message>
        <source>Next month</source>
        <translation>الشهر التالي</translation>
    </message>
    <message numerus="yes">
        <source>Last %n day(s)</source>
        <translation>
            <numerusform>آخر %n يوم</numerusform>
            <numerusform>آخر يوم</numerusform>
            <numerusform>آخر يومين</numerusform>
            <numerusform>آخر %n أيام</numerusform>
            <numerusform>آخر %n يومًا</numerusform>
            <numerusform>آخر %n يوم</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>Dialog</name>
    <message>
        <source>OK</source>
        <translation>موافق</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>إلغاء</translation>
    </message>
</context>
<context>
    <name>EventKinds</name>
    <message>
        <source>Other</source>
        <translation>أخرى</translation>
    </message>
    <message>
        <source>Menu access</source>
        <translation>دخول القائمة</translation>
    </message>
    <message>
        <source>Menu parameter</source>
        <translation>معامل القائمة</translation>
    </message>
    <message>
        <source>Cleaning</source>
        <translation>التنظيف</translation>
    </message>
    <message>
        <source>Dispensed drink</source>
        <translation>مشروب مُقدَّم</translation>
    </message>
    <message>
        <source>Database error</source>
        <translation>خطأ في قاعدة البيانات</translation>
    </message>
    <message>
        <source>CPU fan</source>
        <translation>مروحة المعالج</translation>
    </message>
    <message>
        <source>Update</source>
        <translation>تحديث</translation>
    </message>
    <message>
        <source>Configuration</source>
        <translation>الإعدادات</translation>
    </message>
    <message>
        <source>Application start</source>
        <translation>بدء التطبيق</translation>
    </message>
    <message>
        <source>Ingredient level</source>
        <translation>مستوى المكوّنات</translation>
    </message>
    <message>
        <source>Waste level</source>
        <translation>مستوى النفايات</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>تحذير</translation>
    </message>
    <message>
        <source>Energy saving</source>
        <translation>توفير الطاقة</translation>
    </message>
    <message>
        <source>All events</source>
        <translation>كل الأحداث</translation>
    </message>
</context>
<context>
    <name>EventsPage</name>
    <message>
        <source>Events</source>
        <translation>الأحداث</translation>
    </message>
    <message>
        <source>All days</source>
        <translation>كل الأيام</translation>
    </message>
    <message>
        <source>No events</source>
        <translation>لا توجد أحداث</translation>
    </message>
    <message>
        <source>The machine has not logged an event yet.</source>
        <translation>لم تسجّل الماكينة أي حدث بعد.</translation>
    </message>
    <message>
        <source>No event matches the filters above. Choose another kind or more days.</source>
        <translation>لا يوجد حدث يطابق المرشحات أعلاه. اختر نوعًا آخر أو أيامًا أكثر.</translation>
    </message>
</context>
<context>
    <name>FileParts</name>
    <message>
        <source>Earlier</source>
        <translation>السابق</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>‏%1 من %2</translation>
    </message>
    <message>
        <source>Later</source>
        <translation>التالي</translation>
    </message>
    <message>
        <source>End of the file</source>
        <translation>نهاية الملف</translation>
    </message>
</context>
<context>
    <name>FileText</name>
    <message>
        <source>%1 is deleted.</source>
        <translation>حُذف %1.</translation>
    </message>
    <message>
        <source>Delete this file?</source>
        <translation>هل تريد حذف هذا الملف؟</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>حذف</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>رجوع</translation>
    </message>
    <message>
        <source>Choose a file</source>
        <translation>اختر ملفًا</translation>
    </message>
    <message>
        <source>This file is not text</source>
        <translation>هذا الملف ليس نصًا</translation>
    </message>
    <message>
        <source>The file cannot be read</source>
        <translation>تتعذر قراءة الملف</translation>
    </message>
</context>
<context>
    <name>FilesPage</name>
    <message>
        <source>Files</source>
        <translation>الملفات</translation>
    </message>
    <message>
        <source>Crash reports</source>
        <translation>تقارير الانهيار</translation>
    </message>
</context>
<context>
    <name>FolderRows</name>
    <message>
        <source>The folder is empty</source>
        <translation>المجلد فارغ</translation>
    </message>
    <message>
        <source>The folder cannot be read</source>
        <translation>تتعذر قراءة المجلد</translation>
    </message>
    <message>
        <source>There is no folder to show</source>
        <translation>لا يوجد مجلد لعرضه</translation>
    </message>
    <message>
        <source>It was deleted or unplugged, or the application may not read it. Its files appear when it is back.</source>
        <translation>حُذف أو فُصل، أو لا يُسمح للتطبيق بقراءته. تظهر ملفاته عند عودته.</translation>
    </message>
    <message>
        <source>The application names the folders of this page by the property folders of Service.</source>
        <translation>يحدد التطبيق مجلدات هذه الصفحة بالخاصية folders من Service.</translation>
    </message>
</context>
<context>
    <name>FollowList</name>
    <message>
        <source>Newest line</source>
        <translation>أحدث سطر</translation>
    </message>
</context>
<context>
    <name>KernelPage</name>
    <message>
        <source>Kernel</source>
        <translation>النواة</translation>
    </message>
    <message>
        <source>Capturing</source>
        <translation>التسجيل جارٍ</translation>
    </message>
    <message>
        <source>Not capturing</source>
        <translation>التسجيل متوقف</translation>
    </message>
    <message>
        <source>The machine lets only its administrator read the kernel log (kernel.dmesg_restrict is 1).</source>
        <translation>لا تسمح الماكينة بقراءة سجل النواة إلا لمديرها (قيمة kernel.dmesg_restrict هي 1).</translation>
    </message>
    <message>
        <source>No lines</source>
        <translation>لا توجد أسطر</translation>
    </message>
    <message>
        <source>The kernel log is not captured</source>
        <translation>لا يُسجَّل سجل النواة</translation>
    </message>
    <message>
        <source>No line contains the text above.</source>
        <translation>لا يحتوي أي سطر على النص أعلاه.</translation>
    </message>
    <message>
        <source>The kernel has not written a line yet.</source>
        <translation>لم تكتب النواة أي سطر بعد.</translation>
    </message>
    <message>
        <source>The application starts the capture with Dmesg::start(). A desktop build never captures.</source>
        <translation>يبدأ التطبيق التسجيل بالدالة Dmesg::start()‎. لا تسجّل نسخة سطح المكتب أبدًا.</translation>
    </message>
</context>
<context>
    <name>LineDialog</name>
    <message>
        <source>Close</source>
        <translation>إغلاق</translation>
    </message>
</context>
<context>
    <name>LogFiles</name>
    <message>
        <source>General</source>
        <translation>عام</translation>
    </message>
    <message>
        <source>Events</source>
        <translation>الأحداث</translation>
    </message>
    <message>
        <source>Grinder</source>
        <translation>المطحنة</translation>
    </message>
    <message>
        <source>Capsules</source>
        <translation>الكبسولات</translation>
    </message>
    <message>
        <source>Actuator board</source>
        <translation>لوحة المشغلات</translation>
    </message>
</context>
<context>
    <name>LogLevels</name>
    <message>
        <source>Debug</source>
        <translation>تصحيح</translation>
    </message>
    <message>
        <source>Info</source>
        <translation>معلومات</translation>
    </message>
    <message>
        <source>Event</source>
        <translation>حدث</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>تحذير</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>خطأ</translation>
    </message>
    <message>
        <source>Critical</source>
        <translation>حرج</translation>
    </message>
    <message>
        <source>Grinder</source>
        <translation>المطحنة</translation>
    </message>
    <message>
        <source>Capsule</source>
        <translation>الكبسولة</translation>
    </message>
    <message>
        <source>Actuator board</source>
        <translation>لوحة المشغلات</translation>
    </message>
</context>
<context>
    <name>LogPage</name>
    <message>
        <source>Log</source>
        <translation>السجل</translation>
    </message>
    <message>
        <source>From %1</source>
        <translation>من %1</translation>
    </message>
    <message>
        <source>All modules</source>
        <translation>كل الوحدات</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>إيقاف مؤقت</translation>
    </message>
    <message numerus="yes">
        <source>%n line(s) came faster than this view could take them. The log file has them.</source>
        <translation>
            <numerusform>لم تتجاوز أي أسطر سرعة هذا العرض.</numerusform>
            <numerusform>جاء سطر واحد أسرع مما يستوعبه هذا العرض، وهو في ملف السجل.</numerusform>
            <numerusform>جاء سطران أسرع مما يستوعبه هذا العرض، وهما في ملف السجل.</numerusform>
            <numerusform>جاءت %n أسطر أسرع مما يستوعبه هذا العرض، وهي في ملف السجل.</numerusform>
            <numerusform>جاء %n سطرًا أسرع مما يستوعبه هذا العرض، وهي في ملف السجل.</numerusform>
            <numerusform>جاء %n سطر أسرع مما يستوعبه هذا العرض، وهي في ملف السجل.</numerusform>
        </translation>
    </message>
    <message>
        <source>No lines</source>
        <translation>لا توجد أسطر</translation>
    </message>
    <message>
        <source>No line matches the filters above.</source>
        <translation>لا يطابق أي سطر المرشحات أعلاه.</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>متابعة</translation>
    </message>
    <message>
        <source>Clear the view</source>
        <translation>إفراغ العرض</translation>
    </message>
    <message>
        <source>This program has no folders for log files.</source>
        <translation>لا توجد لهذا البرنامج مجلدات لملفات السجل.</translation>
    </message>
    <message>
        <source>New lines appear here as soon as they are logged.</source>
        <translation>تظهر الأسطر الجديدة هنا فور تسجيلها.</translation>
    </message>
</context>
<context>
    <name>MachinePage</name>
    <message>
        <source>Machine</source>
        <translation>الماكينة</translation>
    </message>
    <message>
        <source>Not running</source>
        <translation>متوقفة</translation>
    </message>
    <message>
        <source>for %1</source>
        <translation>منذ %1</translation>
    </message>
    <message>
        <source>Last changes</source>
        <translation>آخر التغييرات</translation>
    </message>
    <message>
        <source>Smaller</source>
        <translation>تصغير</translation>
    </message>
    <message>
        <source>Larger</source>
        <translation>تكبير</translation>
    </message>
    <message>
        <source>No machine to show</source>
        <translation>لا توجد آلة حالات لعرضها</translation>
    </message>
    <message>
        <source>The application offers its state machines to this page by ViewedMachines::offer().</source>
        <translation>يعرض التطبيق آلات الحالات الخاصة به في هذه الصفحة بالدالة ViewedMachines::offer()‎.</translation>
    </message>
    <message>
        <source>Fit to view</source>
        <translation>ملاءمة العرض</translation>
    </message>
</context>
<context>
    <name>MachinePicture</name>
    <message>
        <source>No picture</source>
        <translation>لا توجد صورة</translation>
    </message>
</context>
<context>
    <name>MachineView</name>
    <message numerus="yes">
        <source>The machine has %n state(s) and is too large for a picture.</source>
        <translation>
            <numerusform>ليس للآلة حالات.</numerusform>
            <numerusform>للآلة حالة واحدة وهي أكبر من أن تُرسم.</numerusform>
            <numerusform>للآلة حالتان وهي أكبر من أن تُرسم.</numerusform>
            <numerusform>للآلة %n حالات وهي أكبر من أن تُرسم.</numerusform>
            <numerusform>للآلة %n حالة وهي أكبر من أن تُرسم.</numerusform>
            <numerusform>للآلة %n حالة وهي أكبر من أن تُرسم.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ModulesDialog</name>
    <message>
        <source>Log modules</source>
        <translation>وحدات السجل</translation>
    </message>
    <message>
        <source>A tap shows the lines of one module. The switch turns debug lines on.</source>
        <translation>تُظهر اللمسة أسطر وحدة واحدة، ويشغّل المفتاح أسطر التصحيح.</translation>
    </message>
    <message>
        <source>All modules</source>
        <translation>كل الوحدات</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>إغلاق</translation>
    </message>
</context>
<context>
    <name>NetworkTime</name>
    <message>
        <source>Network time by ntpd</source>
        <translation>وقت الشبكة عبر ntpd</translation>
    </message>
    <message>
        <source>To get it: apt install ntp, and a server of pool.ntp.org in /etc/ntp.conf</source>
        <translation>للحصول عليه: apt install ntp وخادم من pool.ntp.org في ‎/etc/ntp.conf</translation>
    </message>
    <message>
        <source>Time zones</source>
        <translation>المناطق الزمنية</translation>
    </message>
    <message>
        <source>To get it: apt install tzdata</source>
        <translation>للحصول عليه: apt install tzdata</translation>
    </message>
    <message>
        <source>Network time by systemd</source>
        <translation>وقت الشبكة عبر systemd</translation>
    </message>
    <message>
        <source>To get it: apt install systemd-timesyncd</source>
        <translation>للحصول عليه: apt install systemd-timesyncd</translation>
    </message>
    <message>
        <source>Services</source>
        <translation>الخدمات</translation>
    </message>
    <message>
        <source>Network time</source>
        <translation>وقت الشبكة</translation>
    </message>
    <message>
        <source>No service</source>
        <translation>لا توجد خدمة</translation>
    </message>
    <message>
        <source>The application adds its services, such as service::Ntp, to the ServiceManager.</source>
        <translation>يضيف التطبيق خدماته، مثل service::Ntp، إلى ServiceManager.</translation>
    </message>
    <message>
        <source>Packages</source>
        <translation>الحزم</translation>
    </message>
    <message>
        <source>Not supported by this machine</source>
        <translation>غير مدعوم على هذه الماكينة</translation>
    </message>
</context>
<context>
    <name>OverviewPage</name>
    <message>
        <source>Overview</source>
        <translation>نظرة عامة</translation>
    </message>
    <message>
        <source>Log files</source>
        <translation>ملفات السجل</translation>
    </message>
    <message>
        <source>Failing</source>
        <translation>متعطلة</translation>
    </message>
    <message>
        <source>All written</source>
        <translation>كلها مكتوبة</translation>
    </message>
    <message>
        <source>No line lost</source>
        <translation>لم يُفقد أي سطر</translation>
    </message>
    <message>
        <source>Date and time</source>
        <translation>التاريخ والوقت</translation>
    </message>
    <message>
        <source>Threads</source>
        <translation>الخيوط</translation>
    </message>
    <message>
        <source>Not watched</source>
        <translation>غير مراقبة</translation>
    </message>
    <message>
        <source>One is late</source>
        <translation>أحدها متأخر</translation>
    </message>
    <message>
        <source>All on time</source>
        <translation>كلها في الموعد</translation>
    </message>
    <message>
        <source>%1 watched</source>
        <translation>المراقَبة: %1</translation>
    </message>
    <message>
        <source>The library was built without the monitor.</source>
        <translation>بُنيت المكتبة دون المراقِب.</translation>
    </message>
    <message>
        <source>Last crash</source>
        <translation>آخر انهيار</translation>
    </message>
    <message>
        <source>None</source>
        <translation>لا يوجد</translation>
    </message>
    <message>
        <source>There is no crash report.</source>
        <translation>لا يوجد تقرير انهيار.</translation>
    </message>
    <message>
        <source>Switches</source>
        <translation>المفاتيح</translation>
    </message>
    <message>
        <source>%1 changed</source>
        <translation>المتغيرة: %1</translation>
    </message>
    <message>
        <source>Memory and disk</source>
        <translation>الذاكرة والقرص</translation>
    </message>
    <message>
        <source>Memory</source>
        <translation>الذاكرة</translation>
    </message>
    <message>
        <source>Disk</source>
        <translation>القرص</translation>
    </message>
    <message>
        <source>Running for</source>
        <translation>مدة التشغيل</translation>
    </message>
    <message>
        <source>%1, Linux %2</source>
        <translation>%1، Linux %2</translation>
    </message>
    <message>
        <source>Software</source>
        <translation>البرمجيات</translation>
    </message>
    <message>
        <source>No version</source>
        <translation>بلا إصدار</translation>
    </message>
    <message>
        <source>%1
ZelTools %2, Qt %3</source>
        <translation>%1
ZelTools %2، Qt %3</translation>
    </message>
    <message>
        <source>State machines</source>
        <translation>آلات الحالات</translation>
    </message>
    <message>
        <source>None shown</source>
        <translation>لا شيء معروض</translation>
    </message>
    <message>
        <source>The application offers none.</source>
        <translation>لا يعرض التطبيق أيًا منها.</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1: stopped</source>
        <translation>%1: متوقفة</translation>
    </message>
    <message>
        <source>Lines lost: %1</source>
        <translation>الأسطر المفقودة: %1</translation>
    </message>
    <message>
        <source>This program has no folders for log files.</source>
        <translation>لا توجد لهذا البرنامج مجلدات لملفات السجل.</translation>
    </message>
    <message>
        <source>One has stalled</source>
        <translation>أحدها معلّق</translation>
    </message>
    <message>
        <source>Defaults</source>
        <translation>القيم الافتراضية</translation>
    </message>
    <message>
        <source>Model %1</source>
        <translation>الطراز %1</translation>
    </message>
    <message>
        <source>Board build</source>
        <translation>نسخة اللوحة</translation>
    </message>
    <message>
        <source>Desktop build</source>
        <translation>نسخة سطح المكتب</translation>
    </message>
</context>
<context>
    <name>PageTurner</name>
    <message>
        <source>First page</source>
        <translation>الصفحة الأولى</translation>
    </message>
    <message>
        <source>Page %1 of %2</source>
        <translation>الصفحة %1 من %2</translation>
    </message>
    <message>
        <source>Last page</source>
        <translation>الصفحة الأخيرة</translation>
    </message>
    <message>
        <source>Previous page</source>
        <translation>الصفحة السابقة</translation>
    </message>
    <message>
        <source>Next page</source>
        <translation>الصفحة التالية</translation>
    </message>
</context>
<context>
    <name>Rail</name>
    <message>
        <source>Service</source>
        <translation>الصيانة</translation>
    </message>
</context>
<context>
    <name>ScreenHeader</name>
    <message>
        <source>Read only</source>
        <translation>للقراءة فقط</translation>
    </message>
    <message>
        <source>Operator</source>
        <translation>مشغّل</translation>
    </message>
    <message>
        <source>Technician</source>
        <translation>فني</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>إغلاق</translation>
    </message>
</context>
<context>
    <name>SearchField</name>
    <message>
        <source>Search</source>
        <translation>بحث</translation>
    </message>
    <message>
        <source>Clear the search</source>
        <translation>مسح البحث</translation>
    </message>
</context>
<context>
    <name>SupportPage</name>
    <message>
        <source>Support</source>
        <translation>الدعم</translation>
    </message>
    <message>
        <source>Where the bundle goes</source>
        <translation>وجهة الحزمة</translation>
    </message>
    <message>
        <source>Support bundle</source>
        <translation>حزمة الدعم</translation>
    </message>
    <message>
        <source>This build makes no support bundles</source>
        <translation>هذه النسخة لا تنشئ حزم دعم</translation>
    </message>
    <message>
        <source>Install Debian&apos;s package libarchive-dev and build the library with the CMake option ZELTOOLS_LIBARCHIVE.</source>
        <translation>ثبّت حزمة ديبيان libarchive-dev وابنِ المكتبة بخيار CMake المسمى ZELTOOLS_LIBARCHIVE.</translation>
    </message>
</context>
<context>
    <name>SwitchDialog</name>
    <message>
        <source>%1. The build gives no value.</source>
        <translation>%1. لا تحدد النسخة قيمة.</translation>
    </message>
    <message>
        <source>%1. The build gives the value %2.</source>
        <translation>%1. تحدد النسخة القيمة %2.</translation>
    </message>
    <message>
        <source>Set</source>
        <translation>ضبط</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>إغلاق</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>إلغاء</translation>
    </message>
    <message>
        <source>On</source>
        <translation>تشغيل</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>إيقاف</translation>
    </message>
    <message>
        <source>Back to the value of the build</source>
        <translation>العودة إلى قيمة النسخة</translation>
    </message>
    <message>
        <source>The present value comes from the environment.</source>
        <translation>القيمة الحالية من متغيرات البيئة.</translation>
    </message>
    <message>
        <source>It is the present value.</source>
        <translation>وهي القيمة الحالية.</translation>
    </message>
    <message>
        <source>No value is set.</source>
        <translation>لم تُضبط أي قيمة.</translation>
    </message>
</context>
<context>
    <name>SwitchRow</name>
    <message>
        <source>not set</source>
        <translation>غير مضبوط</translation>
    </message>
    <message>
        <source>empty</source>
        <translation>فارغ</translation>
    </message>
</context>
<context>
    <name>Switches</name>
    <message>
        <source>Enabled for debug build</source>
        <translation>مفعّل في نسخة التشخيص</translation>
    </message>
    <message>
        <source>Enabled on board build</source>
        <translation>مفعّل في نسخة اللوحة</translation>
    </message>
    <message>
        <source>Enabled on PC build</source>
        <translation>مفعّل في نسخة الحاسوب</translation>
    </message>
    <message>
        <source>Enabled on Android</source>
        <translation>مفعّل على Android</translation>
    </message>
    <message>
        <source>Enabled on Linux</source>
        <translation>مفعّل على Linux</translation>
    </message>
    <message>
        <source>Enabled on Windows</source>
        <translation>مفعّل على Windows</translation>
    </message>
    <message>
        <source>Encrypt configuration database</source>
        <translation>تشفير قاعدة بيانات الإعدادات</translation>
    </message>
    <message>
        <source>Encrypt machine database</source>
        <translation>تشفير قاعدة بيانات الماكينة</translation>
    </message>
    <message>
        <source>Force native gui</source>
        <translation>فرض الواجهة الأصلية</translation>
    </message>
    <message>
        <source>Force full screen mode</source>
        <translation>فرض وضع ملء الشاشة</translation>
    </message>
    <message>
        <source>Enabled on arietta build</source>
        <translation>مفعّل في نسخة Arietta</translation>
    </message>
    <message>
        <source>Enabled on Cadenza build</source>
        <translation>مفعّل في نسخة Cadenza</translation>
    </message>
    <message>
        <source>Enabled on sonata build</source>
        <translation>مفعّل في نسخة Sonata</translation>
    </message>
    <message>
        <source>Enabled on vivo build</source>
        <translation>مفعّل في نسخة Vivo</translation>
    </message>
    <message>
        <source>Enable field test logs</source>
        <translation>تفعيل سجلات الاختبار الميداني</translation>
    </message>
    <message>
        <source>Enable lab test feature</source>
        <translation>تفعيل ميزة الاختبار المخبري</translation>
    </message>
    <message>
        <source>Enable sonata sdk verbose output</source>
        <translation>تفعيل الخرج المفصّل لـ SDK الخاص بـ Sonata</translation>
    </message>
    <message>
        <source>Dump M4 debug to file</source>
        <translation>كتابة تشخيص M4 في ملف</translation>
    </message>
    <message>
        <source>Enable Self Learning tests</source>
        <translation>تفعيل اختبارات التعلّم الذاتي</translation>
    </message>
    <message>
        <source>Force usage of virtual can interface</source>
        <translation>فرض استخدام واجهة CAN الافتراضية</translation>
    </message>
    <message>
        <source>Enable CAN bus simulation</source>
        <translation>تفعيل محاكاة ناقل CAN</translation>
    </message>
    <message>
        <source>Disable new canbus messages management</source>
        <translation>تعطيل المعالجة الجديدة لرسائل ناقل CAN</translation>
    </message>
    <message>
        <source>Dump can to log file</source>
        <translation>كتابة رسائل CAN في ملف السجل</translation>
    </message>
    <message>
        <source>Dump can to debug output</source>
        <translation>كتابة رسائل CAN في خرج التشخيص</translation>
    </message>
    <message>
        <source>Set canbus interface path, e.g. can0 or /tmp/ttyS0</source>
        <translation>مسار واجهة ناقل CAN، مثل can0 أو /tmp/ttyS0</translation>
    </message>
    <message>
        <source>Cold products simulation</source>
        <translation>محاكاة المنتجات الباردة</translation>
    </message>
    <message>
        <source>CTG products simulation</source>
        <translation>محاكاة منتجات CTG</translation>
    </message>
    <message>
        <source>Use real CAN bus over USB adapter</source>
        <translation>استخدام ناقل CAN حقيقي عبر محوّل USB</translation>
    </message>
    <message>
        <source>Enable payment simulation over TCP interface</source>
        <translation>تفعيل محاكاة الدفع عبر واجهة TCP</translation>
    </message>
    <message>
        <source>Enable payment over ERS protocol</source>
        <translation>تفعيل الدفع عبر بروتوكول ERS</translation>
    </message>
    <message>
        <source>Enable payment simulation</source>
        <translation>تفعيل محاكاة الدفع</translation>
    </message>
    <message>
        <source>Executive payment device simulator model (DEFAULT/UIC_180/MIZIP)</source>
        <translation>طراز محاكي جهاز الدفع Executive (DEFAULT/UIC_180/MIZIP)</translation>
    </message>
    <message>
        <source>Cashless device 0 simulator model (Mizip/Microtronic/Nayax/AlwaysIdle/VendingCat/FakeAlwaysIdle/OPC</source>
        <translation>طراز محاكي جهاز الدفع غير النقدي 0 (Mizip/Microtronic/Nayax/AlwaysIdle/VendingCat/FakeAlwaysIdle/OPC)</translation>
    </message>
    <message>
        <source>Cashless device 1 simulator model (Mizip/Microtronic/Nayax/AlwaysIdle/VendingCat/FakeAlwaysIdle/OPC</source>
        <translation>طراز محاكي جهاز الدفع غير النقدي 1 (Mizip/Microtronic/Nayax/AlwaysIdle/VendingCat/FakeAlwaysIdle/OPC)</translation>
    </message>
    <message>
        <source>Run payment in main thread</source>
        <translation>تشغيل الدفع في الخيط الرئيسي</translation>
    </message>
    <message>
        <source>Always send configuration to plume device</source>
        <translation>إرسال الإعدادات دائمًا إلى جهاز Plume</translation>
    </message>
    <message>
        <source>Dump payment logs to payment log file</source>
        <translation>كتابة سجلات الدفع في ملف سجل الدفع</translation>
    </message>
    <message>
        <source>Dump payment logs to application output</source>
        <translation>كتابة سجلات الدفع في خرج التطبيق</translation>
    </message>
    <message>
        <source>Dump payment Hi files to application output</source>
        <translation>كتابة ملفات Hi للدفع في خرج التطبيق</translation>
    </message>
    <message>
        <source>Provide explicit payment method selection</source>
        <translation>إتاحة اختيار صريح لطريقة الدفع</translation>
    </message>
    <message>
        <source>Disable watchdog</source>
        <translation>تعطيل مؤقت المراقبة</translation>
    </message>
    <message>
        <source>Use QML screensaver</source>
        <translation>استخدام شاشة توقف QML</translation>
    </message>
    <message>
        <source>Enable cup sensors simulation</source>
        <translation>تفعيل محاكاة مستشعرات الأكواب</translation>
    </message>
    <message>
        <source>Enable extend lifetime feature in cup sensors simulation</source>
        <translation>تفعيل إطالة العمر في محاكاة مستشعرات الأكواب</translation>
    </message>
    <message>
        <source>Cup sensors simulation file path</source>
        <translation>مسار ملف محاكاة مستشعرات الأكواب</translation>
    </message>
    <message>
        <source>Dump cupsensor logs to cupsensors log file</source>
        <translation>كتابة سجلات مستشعرات الأكواب في ملف سجلها</translation>
    </message>
    <message>
        <source>VL6180X simulation on PC via I2C bus.
If disabled, default cup sensor is simulated.
(NOTE: VL6180X_SIMULATION_DEVICE takes effect only if CUPSENSOR_SIMULATION is enabled)</source>
        <translation>محاكاة VL6180X على الحاسوب عبر ناقل I2C.
عند تعطيلها يُحاكى مستشعر الأكواب الافتراضي.
(لا يؤثر VL6180X_SIMULATION_DEVICE إلا إذا كان CUPSENSOR_SIMULATION مفعّلًا.)</translation>
    </message>
    <message>
        <source>Hide payment from technical menu</source>
        <translation>إخفاء الدفع من القائمة الفنية</translation>
    </message>
    <message>
        <source>Dump I2C logs to logs</source>
        <translation>كتابة سجلات I2C في ملفات السجل</translation>
    </message>
    <message>
        <source>Dump I2C logs to application output</source>
        <translation>كتابة سجلات I2C في خرج التطبيق</translation>
    </message>
    <message>
        <source>Show Halcyon server address and port</source>
        <translation>إظهار عنوان خادم Halcyon ومنفذه</translation>
    </message>
    <message>
        <source>Show Halcyon server switch</source>
        <translation>إظهار مفتاح خادم Halcyon</translation>
    </message>
    <message>
        <source>Disable Halcyon modem public IP address</source>
        <translation>تعطيل عنوان IP العام لمودم Halcyon</translation>
    </message>
    <message>
        <source>Enable Halcyon APN override</source>
        <translation>تفعيل استبدال APN الخاص بـ Halcyon</translation>
    </message>
    <message>
        <source>Show touchless server switch</source>
        <translation>إظهار مفتاح خادم التشغيل بدون لمس</translation>
    </message>
    <message>
        <source>Use vestaone version for windows</source>
        <translation>استخدام إصدار Vesta One لنظام Windows</translation>
    </message>
    <message>
        <source>Disable keyboard buzzer on vesta one</source>
        <translation>تعطيل صفارة لوحة المفاتيح في Vesta One</translation>
    </message>
    <message>
        <source>Directly go to given menu (eg. 8.1.10) when entering vestaone technical menu</source>
        <translation>فتح هذه القائمة مباشرة (مثل 8.1.10) عند دخول القائمة الفنية في Vesta One</translation>
    </message>
    <message>
        <source>Enabled on android emulator</source>
        <translation>مفعّل على محاكي Android</translation>
    </message>
    <message>
        <source>Force android assets copy on startup</source>
        <translation>فرض نسخ ملفات Android عند بدء التشغيل</translation>
    </message>
    <message>
        <source>Android application package name</source>
        <translation>اسم حزمة تطبيق Android</translation>
    </message>
    <message>
        <source>Android application activity</source>
        <translation>نشاط (Activity) تطبيق Android</translation>
    </message>
    <message>
        <source>Disable android task lock</source>
        <translation>تعطيل قفل المهام في Android</translation>
    </message>
    <message>
        <source>Dump ERS protocol data to application output</source>
        <translation>كتابة بيانات بروتوكول ERS في خرج التطبيق</translation>
    </message>
    <message>
        <source>Dump ERS protocol data to log file</source>
        <translation>كتابة بيانات بروتوكول ERS في ملف السجل</translation>
    </message>
    <message>
        <source>Use ERS protocol for erogation</source>
        <translation>استخدام بروتوكول ERS للصرف</translation>
    </message>
    <message>
        <source>ERS master interface path on desktop</source>
        <translation>مسار واجهة ERS الرئيسية على سطح المكتب</translation>
    </message>
    <message>
        <source>Disable power board keep alive</source>
        <translation>تعطيل إشارة بقاء الاتصال للوحة القدرة</translation>
    </message>
    <message>
        <source>Enable power board simulation</source>
        <translation>تفعيل محاكاة لوحة القدرة</translation>
    </message>
    <message>
        <source>Ignore power board error status</source>
        <translation>تجاهل حالة خطأ لوحة القدرة</translation>
    </message>
    <message>
        <source>Disable power board temperature reading</source>
        <translation>تعطيل قراءة درجة حرارة لوحة القدرة</translation>
    </message>
    <message>
        <source>Force using CAN interface also on desktop</source>
        <translation>فرض استخدام واجهة CAN على سطح المكتب أيضًا</translation>
    </message>
    <message>
        <source>No_UL_Limit_120</source>
        <translation>بدون حد UL 120</translation>
    </message>
    <message>
        <source>Force USB storage path</source>
        <translation>فرض مسار وحدة تخزين USB</translation>
    </message>
    <message>
        <source>Fill all translations with sample</source>
        <translation>ملء كل الترجمات بنص تجريبي</translation>
    </message>
    <message>
        <source>Fill missing translations with sample</source>
        <translation>ملء الترجمات الناقصة بنص تجريبي</translation>
    </message>
    <message>
        <source>Indicate Arietta Meridian</source>
        <translation>يشير إلى Arietta Meridian</translation>
    </message>
    <message>
        <source>Indicate Sonata Meridian</source>
        <translation>يشير إلى Sonata Meridian</translation>
    </message>
    <message>
        <source>Indicate Vivo Meridian</source>
        <translation>يشير إلى Vivo Meridian</translation>
    </message>
    <message>
        <source>Don&apos;t load M4 firmware on startup</source>
        <translation>عدم تحميل برنامج M4 الثابت عند بدء التشغيل</translation>
    </message>
    <message>
        <source>Don&apos;t start and stop bluetooth daemon</source>
        <translation>عدم تشغيل خدمة Bluetooth وإيقافها</translation>
    </message>
    <message>
        <source>Do not modify network configuration at runtime</source>
        <translation>عدم تعديل إعدادات الشبكة أثناء التشغيل</translation>
    </message>
    <message>
        <source>Enable ethernet debug mode</source>
        <translation>تفعيل وضع تشخيص Ethernet</translation>
    </message>
    <message>
        <source>Start machine in Tessel mode.</source>
        <translation>تشغيل الماكينة في وضع Tessel</translation>
    </message>
    <message>
        <source>Enable feature conditioned to ZEL_CUSTOM_1_MANAGEMENT variable</source>
        <translation>تفعيل الميزة المرتبطة بالمتغير ZEL_CUSTOM_1_MANAGEMENT</translation>
    </message>
    <message>
        <source>Connect to DateTimeSimulator using given simulation interface address</source>
        <translation>الاتصال بـ DateTimeSimulator عبر عنوان واجهة المحاكاة هذا</translation>
    </message>
    <message>
        <source>Ignore data recived from ICB but apply the time component</source>
        <translation>تجاهل البيانات الواردة من ICB باستثناء الوقت</translation>
    </message>
    <message>
        <source>Piston Position Visible for ESFB with all canister.</source>
        <translation>موضع المكبس مرئي لـ ESFB مع جميع الحاويات</translation>
    </message>
    <message>
        <source>Set a different port for EVADTS communication</source>
        <translation>تعيين منفذ آخر لاتصال EVADTS</translation>
    </message>
    <message>
        <source>Force Corvid device ID</source>
        <translation>فرض معرّف جهاز Corvid</translation>
    </message>
    <message>
        <source>Inhibit Corvid transaction manager</source>
        <translation>منع مدير معاملات Corvid</translation>
    </message>
    <message>
        <source>Indicate LyraCore For Windows</source>
        <translation>يشير إلى LyraCore لنظام Windows</translation>
    </message>
    <message>
        <source>Set startup menu for Cap Keys gui package</source>
        <translation>قائمة البدء لحزمة واجهة Cap Keys</translation>
    </message>
    <message>
        <source>Simulate capacitive keys keyboard</source>
        <translation>محاكاة لوحة المفاتيح السعوية</translation>
    </message>
    <message>
        <source>Simulate capacitive keys leds</source>
        <translation>محاكاة مصابيح المفاتيح السعوية</translation>
    </message>
</context>
<context>
    <name>SwitchesPage</name>
    <message>
        <source>Switches</source>
        <translation>المفاتيح</translation>
    </message>
    <message>
        <source>The switch is not in the list any more.</source>
        <translation>لم يعد المفتاح في القائمة.</translation>
    </message>
    <message>
        <source>Changed</source>
        <translation>المتغيرة</translation>
    </message>
    <message>
        <source>You can look at all switches. A technician can change them.</source>
        <translation>يمكنك الاطلاع على كل المفاتيح، ويمكن للفني تغييرها.</translation>
    </message>
    <message>
        <source>Save again</source>
        <translation>حفظ مرة أخرى</translation>
    </message>
    <message>
        <source>Saved</source>
        <translation>حُفظ</translation>
    </message>
    <message>
        <source>No switches</source>
        <translation>لا توجد مفاتيح</translation>
    </message>
    <message>
        <source>No switch matches the filters above.</source>
        <translation>لا يوجد مفتاح يطابق المرشحات أعلاه.</translation>
    </message>
</context>
<context>
    <name>ThreadRow</name>
    <message>
        <source>Thread %1</source>
        <translation>الخيط %1</translation>
    </message>
    <message>
        <source>Watched item</source>
        <translation>عنصر مراقَب</translation>
    </message>
    <message>
        <source>%1 since the last tick</source>
        <translation>%1 منذ آخر نبضة</translation>
    </message>
    <message>
        <source>The calls of a thread are known once it has stalled.</source>
        <translation>تُعرف استدعاءات الخيط عندما يتعلّق.</translation>
    </message>
</context>
<context>
    <name>ThreadsPage</name>
    <message>
        <source>Threads</source>
        <translation>الخيوط</translation>
    </message>
    <message>
        <source>A thread has stalled</source>
        <translation>هناك خيط معلّق</translation>
    </message>
    <message>
        <source>A thread is late</source>
        <translation>هناك خيط متأخر</translation>
    </message>
    <message>
        <source>All threads work</source>
        <translation>كل الخيوط تعمل</translation>
    </message>
    <message>
        <source>Recovered since the start: %1</source>
        <translation>تعافت منذ البدء: %1</translation>
    </message>
    <message>
        <source>No thread has registered</source>
        <translation>لم يُسجَّل أي خيط</translation>
    </message>
    <message>
        <source>Threads are not watched</source>
        <translation>الخيوط غير مراقبة</translation>
    </message>
    <message>
        <source>The application registers its threads with the library&apos;s Monitor, or starts them as MonitoredQThread.</source>
        <translation>يسجّل التطبيق خيوطه لدى Monitor في المكتبة أو يشغّلها بالصنف MonitoredQThread.</translation>
    </message>
    <message>
        <source>This build of the library watches no threads. The CMake option ZELTOOLS_MONITORING builds one that does.</source>
        <translation>هذه النسخة من المكتبة لا تراقب الخيوط. خيار CMake المسمى ZELTOOLS_MONITORING يبني نسخة تراقبها.</translation>
    </message>
</context>
<context>
    <name>TimePage</name>
    <message>
        <source>Date and time</source>
        <translation>التاريخ والوقت</translation>
    </message>
    <message>
        <source>Clock</source>
        <translation>الساعة</translation>
    </message>
    <message>
        <source>Time zone</source>
        <translation>المنطقة الزمنية</translation>
    </message>
    <message>
        <source>Network time</source>
        <translation>وقت الشبكة</translation>
    </message>
</context>
<context>
    <name>UsageBar</name>
    <message>
        <source>%1: %2 free</source>
        <translation>%1: %2 متاحة</translation>
    </message>
</context>
<context>
    <name>ZoneChoice</name>
    <message>
        <source>The time zone is now %1.</source>
        <translation>المنطقة الزمنية الآن %1.</translation>
    </message>
    <message>
        <source>No such time zone</source>
        <translation>لا توجد منطقة زمنية كهذه</translation>
    </message>
    <message>
        <source>Choose an area</source>
        <translation>اختر منطقة</translation>
    </message>
    <message>
        <source>This machine has no time zones</source>
        <translation>لا توجد مناطق زمنية في هذه الماكينة</translation>
    </message>
    <message>
        <source>Add the package tzdata to its image: apt install tzdata.</source>
        <translation>أضف الحزمة tzdata إلى صورة نظامها: apt install tzdata.</translation>
    </message>
</context>
<context>
    <name>formats</name>
    <message>
        <source>%1 B</source>
        <translation>%1 بايت</translation>
    </message>
    <message>
        <source>%1 kB</source>
        <translation>%1 ك.ب</translation>
    </message>
    <message>
        <source>%1 MB</source>
        <translation>%1 م.ب</translation>
    </message>
    <message>
        <source>%1 GB</source>
        <translation>%1 غ.ب</translation>
    </message>
</context>
<context>
    <name>zeltools::quick::Access</name>
    <message>
        <source>Only an operator may change this.</source>
        <translation>لا يغيّر هذا إلا مشغّل.</translation>
    </message>
    <message>
        <source>Only a technician may change this.</source>
        <translation>لا يغيّر هذا إلا فني.</translation>
    </message>
    <message>
        <source>This program has no folders for log files.</source>
        <translation>لا توجد لهذا البرنامج مجلدات لملفات السجل.</translation>
    </message>
</context>
<context>
    <name>zeltools::quick::BundleTask</name>
    <message>
        <source>The library on this machine was built without support bundles.</source>
        <translation>بُنيت المكتبة على هذه الماكينة بدون حزم الدعم.</translation>
    </message>
    <message>
        <source>The application does not tell where its files are.</source>
        <translation>لا يحدد التطبيق مكان ملفاته.</translation>
    </message>
    <message>
        <source>The folder %1 does not exist.</source>
        <translation>المجلد %1 غير موجود.</translation>
    </message>
    <message>
        <source>A file cannot have the name %1.</source>
        <translation>لا يمكن أن يكون اسم ملف %1.</translation>
    </message>
</context>
<context>
    <name>zeltools::quick::Clock</name>
    <message>
        <source>This is not a date and time.</source>
        <translation>هذا ليس تاريخًا ووقتًا.</translation>
    </message>
    <message>
        <source>The clock could not be set.</source>
        <translation>تعذّر ضبط الساعة.</translation>
    </message>
    <message>
        <source>The time zone could not be switched.</source>
        <translation>تعذّر تغيير المنطقة الزمنية.</translation>
    </message>
</context>
<context>
    <name>zeltools::quick::CrashReportsModel</name>
    <message>
        <source>The file is no longer there.</source>
        <translation>لم يعد الملف موجودًا.</translation>
    </message>
    <message>
        <source>The report cannot be deleted: %1</source>
        <translation>تعذّر حذف التقرير: %1</translation>
    </message>
    <message>
        <source>The report does not tell the reason.</source>
        <translation>لا يذكر التقرير السبب.</translation>
    </message>
    <message>
        <source>The file is damaged: %1</source>
        <translation>الملف تالف: %1</translation>
    </message>
</context>
<context>
    <name>zeltools::quick::EventHistoryModel</name>
    <message>
        <source>This program has no folders for log files.</source>
        <translation>لا توجد لهذا البرنامج مجلدات لملفات السجل.</translation>
    </message>
    <message>
        <source>“%1” is not a date. Write the day, month and year as 31/12/2026.</source>
        <translation>«%1» ليس تاريخًا. اكتب اليوم والشهر والسنة هكذا: 31/12/2026.</translation>
    </message>
</context>
<context>
    <name>zeltools::quick::FilesAccess</name>
    <message>
        <source>This file is not accessible here.</source>
        <translation>لا يمكن الوصول إلى هذا الملف هنا.</translation>
    </message>
    <message>
        <source>This is not a file.</source>
        <translation>هذا ليس ملفًا.</translation>
    </message>
</context>
<context>
    <name>zeltools::quick::Library</name>
    <message>
        <source>%1 ms</source>
        <translation>%1 م.ث</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 ث</translation>
    </message>
    <message>
        <source>%1 min</source>
        <translation>%1 د</translation>
    </message>
    <message>
        <source>%1 min %2 s</source>
        <translation>%1 د %2 ث</translation>
    </message>
    <message>
        <source>%1 h %2 min</source>
        <translation>%1 س %2 د</translation>
    </message>
    <message>
        <source>%1 d %2 h</source>
        <translation>%1 ي %2 س</translation>
    </message>
</context>
<context>
    <name>zeltools::quick::LogModulesModel</name>
    <message>
        <source>This module does not exist.</source>
        <translation>هذه الوحدة غير موجودة.</translation>
    </message>
</context>
<context>
    <name>zeltools::quick::MachineGraph</name>
    <message>
        <source>after %1</source>
        <translation>بعد %1</translation>
    </message>
    <message>
        <source>[guard]</source>
        <translation>[شرط]</translation>
    </message>
</context>
<context>
    <name>zeltools::quick::MachineView</name>
    <message numerus="yes">
        <source>The machine has %n state(s) and is too large for a picture.</source>
        <translation>
            <numerusform>ليس للآلة حالات.</numerusform>
            <numerusform>للآلة حالة واحدة وهي أكبر من أن تُرسم.</numerusform>
            <numerusform>للآلة حالتان وهي أكبر من أن تُرسم.</numerusform>
            <numerusform>للآلة %n حالات وهي أكبر من أن تُرسم.</numerusform>
            <numerusform>للآلة %n حالة وهي أكبر من أن تُرسم.</numerusform>
            <numerusform>للآلة %n حالة وهي أكبر من أن تُرسم.</numerusform>
        </translation>
    </message>
    <message>
        <source>This machine is not described as data, so that there is no picture of it.</source>
        <translation>هذه الآلة غير موصوفة كبيانات، ولذلك لا توجد لها صورة.</translation>
    </message>
</context>
<context>
    <name>zeltools::quick::ServicesModel</name>
    <message>
        <source>There is no such service.</source>
        <translation>لا توجد خدمة كهذه.</translation>
    </message>
    <message>
        <source>The service could not be switched.</source>
        <translation>تعذّر تبديل حالة الخدمة.</translation>
    </message>
</context>
<context>
    <name>zeltools::quick::SwitchEditor</name>
    <message>
        <source>This switch is no longer there.</source>
        <translation>لم يعد هذا المفتاح موجودًا.</translation>
    </message>
    <message>
        <source>The environment file cannot hold a line break, nor a blank at an end.</source>
        <translation>لا يقبل ملف البيئة فاصل أسطر ولا مسافة في الطرفين.</translation>
    </message>
    <message>
        <source>There is no environment file; changes last until the program ends.</source>
        <translation>لا يوجد ملف بيئة؛ تبقى التغييرات حتى انتهاء البرنامج.</translation>
    </message>
    <message>
        <source>The environment file is unchanged, and changes last until the program ends: %1</source>
        <translation>لم يتغير ملف البيئة، وتبقى التغييرات حتى انتهاء البرنامج: %1</translation>
    </message>
    <message>
        <source>the file was refused</source>
        <translation>رُفض الملف</translation>
    </message>
</context>
<context>
    <name>zeltools::quick::SwitchTexts</name>
    <message>
        <source>Text</source>
        <translation>نص</translation>
    </message>
    <message>
        <source>Number</source>
        <translation>رقم</translation>
    </message>
    <message>
        <source>On or off</source>
        <translation>تشغيل أو إيقاف</translation>
    </message>
    <message>
        <source>General</source>
        <translation>عام</translation>
    </message>
    <message>
        <source>Test</source>
        <translation>اختبار</translation>
    </message>
    <message>
        <source>CAN bus</source>
        <translation>ناقل CAN</translation>
    </message>
    <message>
        <source>Payment</source>
        <translation>الدفع</translation>
    </message>
    <message>
        <source>Watchdog</source>
        <translation>مؤقت المراقبة</translation>
    </message>
    <message>
        <source>Display</source>
        <translation>الشاشة</translation>
    </message>
    <message>
        <source>Cup sensor</source>
        <translation>مستشعر الكوب</translation>
    </message>
    <message>
        <source>I2C</source>
        <translation>I2C</translation>
    </message>
    <message>
        <source>ERS protocol</source>
        <translation>بروتوكول ERS</translation>
    </message>
    <message>
        <source>Remote server</source>
        <translation>الخادم البعيد</translation>
    </message>
    <message>
        <source>Touchless</source>
        <translation>دون لمس</translation>
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
        <translation>متنوعات</translation>
    </message>
    <message>
        <source>Power board</source>
        <translation>لوحة القدرة</translation>
    </message>
    <message>
        <source>Bluetooth</source>
        <translation>بلوتوث</translation>
    </message>
    <message>
        <source>Network</source>
        <translation>الشبكة</translation>
    </message>
    <message>
        <source>Date and time</source>
        <translation>التاريخ والوقت</translation>
    </message>
    <message>
        <source>Piston</source>
        <translation>المكبس</translation>
    </message>
    <message>
        <source>Capacitive keys</source>
        <translation>أزرار سعوية</translation>
    </message>
    <message>
        <source>SocketCAN</source>
        <translation>SocketCAN</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a whole number from %2 to %3.</source>
        <translation>«%1» ليس عددًا صحيحًا من %2 إلى %3.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is neither 1 (on) nor 0 (off).</source>
        <translation>«%1» ليس 1 (تشغيل) ولا 0 (إيقاف).</translation>
    </message>
    <message>
        <source>The switch does not take &quot;%1&quot;.</source>
        <translation>لا يقبل المفتاح «%1».</translation>
    </message>
    <message>
        <source>All</source>
        <translation>الكل</translation>
    </message>
</context>
<context>
    <name>zeltools::quick::ThreadsModel</name>
    <message>
        <source>on time</source>
        <translation>في الموعد</translation>
    </message>
    <message>
        <source>late</source>
        <translation>متأخر</translation>
    </message>
    <message>
        <source>stalled</source>
        <translation>معلّق</translation>
    </message>
    <message>
        <source>paused</source>
        <translation>متوقف مؤقتًا</translation>
    </message>
</context>
</TS>
