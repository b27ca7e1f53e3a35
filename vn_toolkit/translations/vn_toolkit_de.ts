<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>QObject</name>
    <message>
        <source>Fatal error</source>
        <translation>Schwerwiegender Fehler</translation>
    </message>
    <message>
        <source>%1 encountered a fatal error and must be terminated:
%2</source>
        <translation>%1 ist auf einen schwerwiegenden Fehler gestoßen und muss beendet werden:
%2</translation>
    </message>
</context>
<context>
    <name>vn::application_log</name>
    <message>
        <source>Application Log</source>
        <translation>Anwendungsprotokoll</translation>
    </message>
    <message>
        <source>Filter...</source>
        <translation>Filtern...</translation>
    </message>
    <message>
        <source>Save to disk</source>
        <translation>Auf Festplatte speichern</translation>
    </message>
    <message>
        <source>Clear log</source>
        <translation>Protokoll leeren</translation>
    </message>
    <message>
        <source>Network report</source>
        <translation>Netzwerkbericht</translation>
    </message>
    <message>
        <source>Failed to save application logs</source>
        <translation>Anwendungsprotokolle konnten nicht gespeichert werden</translation>
    </message>
    <message>
        <source>Can&apos;t save the application logs to
%1

You might not have write permission or the disk might be full.</source>
        <translation>Die Anwendungsprotokolle können nicht gespeichert werden unter
%1

Möglicherweise fehlt die Schreibberechtigung oder der Datenträger ist voll.</translation>
    </message>
    <message>
        <source>Failed to write the complete application logs to
%1

Could only write %2/%3 bytes. The disk might be full.</source>
        <translation>Die Anwendungsprotokolle konnten nicht vollständig gespeichert werden unter
%1

Es konnten nur %2/%3 Bytes geschrieben werden. Der Datenträger ist möglicherweise voll.</translation>
    </message>
    <message>
        <source>Application logs saved</source>
        <translation>Anwendungsprotokolle gespeichert</translation>
    </message>
    <message>
        <source>The application logs were saved to
%1</source>
        <translation>Die Anwendungsprotokolle wurden gespeichert unter
%1</translation>
    </message>
    <message>
        <source>Clear application logs</source>
        <translation>Anwendungsprotokolle leeren</translation>
    </message>
    <message>
        <source>Do you really want to clear the application logs?</source>
        <translation>Möchten Sie die Anwendungsprotokolle wirklich leeren?</translation>
    </message>
</context>
<context>
    <name>vn::datetime_format_selector</name>
    <message>
        <source>DD/MM/YYYY</source>
        <translation>TT/MM/JJJJ</translation>
    </message>
    <message>
        <source>DD.MM.YYYY</source>
        <translation>TT.MM.JJJJ</translation>
    </message>
    <message>
        <source>DD-MM-YYYY</source>
        <translation>TT-MM-JJJJ</translation>
    </message>
    <message>
        <source>YYYY/MM/DD</source>
        <translation>JJJJ/MM/TT</translation>
    </message>
    <message>
        <source>YYYY.MM.DD</source>
        <translation>JJJJ.MM.TT</translation>
    </message>
    <message>
        <source>YYYY-MM-DD</source>
        <translation>JJJJ-MM-TT</translation>
    </message>
    <message>
        <source>MM/DD/YYYY</source>
        <translation>MM/TT/JJJJ</translation>
    </message>
    <message>
        <source>hh:mm:ss</source>
        <translation>hh:mm:ss</translation>
    </message>
    <message>
        <source>hh:mm</source>
        <translation>hh:mm</translation>
    </message>
    <message>
        <source>Date Format</source>
        <translation>Datumsformat</translation>
    </message>
    <message>
        <source>Time Format</source>
        <translation>Zeitformat</translation>
    </message>
</context>
<context>
    <name>vn::dialog_3rd_part_lib_info</name>
    <message>
        <source>About 3rd party libraries</source>
        <translation>Über die Bibliotheken von Drittanbietern</translation>
    </message>
    <message>
        <source>%1 uses the following open source and/or 3rd party libraries:</source>
        <translation>%1 verwendet die folgenden Open-Source-Bibliotheken und/oder Bibliotheken von Drittanbietern:</translation>
    </message>
    <message>
        <source>Could not open %1</source>
        <translation>%1 konnte nicht geöffnet werden</translation>
    </message>
</context>
<context>
    <name>vn::dialog_about</name>
    <message>
        <source>About</source>
        <translation>Über</translation>
    </message>
    <message>
        <source>Version:</source>
        <translation>Version:</translation>
    </message>
    <message>
        <source>Bit</source>
        <translation>Bit</translation>
    </message>
    <message>
        <source>Webseite:</source>
        <translation>Webseite:</translation>
    </message>
    <message>
        <source>Click here for 3rd party library information</source>
        <translation>Hier klicken für Informationen zu Bibliotheken von Drittanbietern</translation>
    </message>
    <message>
        <source>Copyright %1 %2-%3 %4. All rights reserved.</source>
        <translation>Copyright %1 %2-%3 %4. Alle Rechte vorbehalten.</translation>
    </message>
    <message>
        <source>This software uses the Qt toolkit, linked dynamically under the GNU Lesser General Public License (LGPL) version 3. The source code of the Qt SDK is available at:&lt;br&gt;&lt;a href=&quot;https://www.qt.io/&quot; style=&quot;color:#728a84;&quot;&gt;https://www.qt.io/&lt;/a&gt;</source>
        <translation>Diese Software verwendet das Qt-Toolkit, dynamisch gebunden unter der GNU Lesser General Public License (LGPL) Version 3. Der Quellcode des Qt SDK ist erhältlich unter:&lt;br&gt;&lt;a href=&quot;https://www.qt.io/&quot; style=&quot;color:#728a84;&quot;&gt;https://www.qt.io/&lt;/a&gt;</translation>
    </message>
    <message>
        <source>This software uses ExifTool by Phil Harvey to read and write metadata:&lt;br&gt;&lt;a href=&quot;https://exiftool.org/&quot; style=&quot;color:#728a84;&quot;&gt;https://exiftool.org/&lt;/a&gt;</source>
        <translation>Diese Software verwendet ExifTool von Phil Harvey, um Metadaten zu lesen und zu schreiben:&lt;br&gt;&lt;a href=&quot;https://exiftool.org/&quot; style=&quot;color:#728a84;&quot;&gt;https://exiftool.org/&lt;/a&gt;</translation>
    </message>
    <message>
        <source>This software embeds the fonts FreeSans and FreeSansBold of GNU FreeFont, licensed under the GNU General Public License version 3 or later with the font exception:&lt;br&gt;&lt;a href=&quot;https://www.gnu.org/software/freefont/&quot; style=&quot;color:#728a84;&quot;&gt;https://www.gnu.org/software/freefont/&lt;/a&gt;</source>
        <translation>Diese Software enthält die Schriften FreeSans und FreeSansBold aus GNU FreeFont, lizenziert unter der GNU General Public License Version 3 oder später mit Schriftausnahme:&lt;br&gt;&lt;a href=&quot;https://www.gnu.org/software/freefont/&quot; style=&quot;color:#728a84;&quot;&gt;https://www.gnu.org/software/freefont/&lt;/a&gt;</translation>
    </message>
</context>
<context>
    <name>vn::exiftool</name>
    <message>
        <source>the name holds a line break</source>
        <translation>der Name enthält einen Zeilenumbruch</translation>
    </message>
    <message>
        <source>the path isn&apos;t absolute</source>
        <translation>der Pfad ist nicht absolut</translation>
    </message>
    <message>
        <source>a folder, not a file</source>
        <translation>ein Ordner, keine Datei</translation>
    </message>
    <message>
        <source>file not found</source>
        <translation>Datei nicht gefunden</translation>
    </message>
    <message>
        <source>read-only</source>
        <translation>schreibgeschützt</translation>
    </message>
    <message>
        <source>ExifTool ended before it answered</source>
        <translation>ExifTool wurde beendet, bevor es antwortete</translation>
    </message>
    <message>
        <source>ExifTool didn&apos;t answer within %1 s and was stopped</source>
        <translation>ExifTool hat nicht innerhalb von %1 s geantwortet und wurde beendet</translation>
    </message>
    <message>
        <source>a tag or value holds a line break</source>
        <translation>ein Tag oder Wert enthält einen Zeilenumbruch</translation>
    </message>
    <message>
        <source>&apos;%1&apos; isn&apos;t a tag name</source>
        <translation>„%1“ ist kein Tag-Name</translation>
    </message>
</context>
</TS>
