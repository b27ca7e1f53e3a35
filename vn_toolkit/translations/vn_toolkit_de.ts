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
</TS>
