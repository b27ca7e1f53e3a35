<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>gpx_parser</name>
    <message>
        <location filename="../../app/model/gpx_parser.cpp" line="119"/>
        <source>Waypoints</source>
        <translation>Wegpunkte</translation>
    </message>
</context>
</TS>
