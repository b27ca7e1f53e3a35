<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>MainWindow</name>
    <message>
        <source>Load all tracks</source>
        <translation>Alle Tracks laden</translation>
    </message>
    <message>
        <source> (%1 Points)</source>
        <translation> (%1 Punkte)</translation>
    </message>
    <message>
        <source>Merged Track</source>
        <translation>Zusammengeführter Track</translation>
    </message>
    <message>
        <source>Show settings dialog</source>
        <translation>Einstellungen anzeigen</translation>
    </message>
    <message>
        <source>Show information about this program</source>
        <translation>Informationen über dieses Programm anzeigen</translation>
    </message>
    <message>
        <source>Display the help page for this program</source>
        <translation>Hilfeseite zu diesem Programm anzeigen</translation>
    </message>
    <message>
        <source>Change the GPS coordinates on all loaded images to their preview values</source>
        <translation>GPS-Koordinaten aller geladenen Fotos auf die Werte der Vorschau setzen</translation>
    </message>
    <message>
        <source>Undo the last edit of an images GPS coordinates</source>
        <translation>Letzte Änderung der GPS-Koordinaten rückgängig machen</translation>
    </message>
    <message>
        <source>Clear the list of loaded files</source>
        <translation>Liste der geladenen Dateien leeren</translation>
    </message>
    <message>
        <source>Load file(s) from disk</source>
        <translation>Datei(en) von der Festplatte laden</translation>
    </message>
    <message>
        <source>Obtain data from the previous GPS-Tagged photo</source>
        <translation>Daten vom vorherigen Foto mit GPS-Daten übernehmen</translation>
    </message>
    <message>
        <source>Obtain data from the following GPS-Tagged photo</source>
        <translation>Daten vom folgenden Foto mit GPS-Daten übernehmen</translation>
    </message>
    <message>
        <source>Obtain data from the closest GPS-Tagged photo</source>
        <translation>Daten vom zeitlich nächsten Foto mit GPS-Daten übernehmen</translation>
    </message>
    <message>
        <source>If time difference in minutes between two images is greater than this number no GPS position will be assigned</source>
        <translation>Ist der Zeitunterschied zwischen zwei Fotos in Minuten größer als dieser Wert, wird keine GPS-Position zugewiesen</translation>
    </message>
    <message>
        <source>Max. time diff.</source>
        <translation>Max. Zeitdiff.</translation>
    </message>
    <message>
        <source>min.</source>
        <translation>Min.</translation>
    </message>
    <message>
        <source>Set GPS position of all photos to user specified value</source>
        <translation>GPS-Position aller Fotos auf einen eigenen Wert setzen</translation>
    </message>
    <message>
        <source>Latitude</source>
        <translation>Breitengrad</translation>
    </message>
    <message>
        <source>Longitude</source>
        <translation>Längengrad</translation>
    </message>
    <message>
        <source>e.g. -19.178194
or 19°10&apos;41.5&quot;S</source>
        <translation>z. B. -19.178194
oder 19°10&apos;41.5&quot;S</translation>
    </message>
    <message>
        <source>e.g. 46.501221
or 46°30&apos;4.4&quot;E</source>
        <translation>z. B. 46.501221
oder 46°30&apos;4.4&quot;E</translation>
    </message>
    <message>
        <source>If time difference in minutes between the image an the nearest gpx data point is greater than this number no GPS position will be assigned</source>
        <translation>Ist der Zeitunterschied zwischen dem Foto und dem nächsten GPX-Punkt in Minuten größer als dieser Wert, wird keine GPS-Position zugewiesen</translation>
    </message>
    <message>
        <source>Load GPX</source>
        <translation>GPX laden</translation>
    </message>
    <message>
        <source>Remove GPS data from all files</source>
        <translation>Alle GPS-Daten entfernen</translation>
    </message>
    <message>
        <source>Loading files</source>
        <translation>Dateien werden geladen</translation>
    </message>
    <message>
        <source>%v of %m</source>
        <translation>%v von %m</translation>
    </message>
    <message>
        <source>Syncing GPS data</source>
        <translation>GPS-Daten werden synchronisiert</translation>
    </message>
    <message>
        <source>There are no images with assigned GPS coordinate.

If you are sure the GPS source belongs to the loaded photos,please consult the manual.</source>
        <translation>Keinem Foto wurde eine GPS-Koordinate zugewiesen.

Wenn Sie sicher sind, dass die GPS-Quelle zu den geladenen Fotos gehört, schlagen Sie bitte im Handbuch nach.</translation>
    </message>
    <message>
        <source>Select files</source>
        <translation>Dateien auswählen</translation>
    </message>
    <message>
        <source>All supported files </source>
        <translation>Alle unterstützten Dateien </translation>
    </message>
    <message>
        <source>Could not assign a GPS position to all files using the current assignment mode</source>
        <translation>Mit der aktuellen Zuordnungsart konnte nicht allen Dateien eine GPS-Position zugewiesen werden</translation>
    </message>
    <message>
        <source>Continue anyway</source>
        <translation>Trotzdem fortfahren</translation>
    </message>
    <message>
        <source>Select a different assignment mode</source>
        <translation>Andere Zuordnungsart wählen</translation>
    </message>
    <message>
        <source>Some loaded images already had GPS data which would be overwritten</source>
        <translation>Einige geladene Fotos haben bereits GPS-Daten, die überschrieben würden</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Fortfahren</translation>
    </message>
    <message>
        <source>Abort</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>QuickTime GPS coordinates are read only and can&apos;t be modified or deleted.
If you set GPS tags they will be written into EXIF.
In most application the EXIF tag is preferred over the QuickTime tag.</source>
        <translation>QuickTime-GPS-Koordinaten sind schreibgeschützt und können weder geändert noch gelöscht werden.
Wenn Sie GPS-Tags setzen, werden sie in EXIF geschrieben.
Die meisten Programme bevorzugen den EXIF-Tag gegenüber dem QuickTime-Tag.</translation>
    </message>
    <message>
        <source>Continue?</source>
        <translation>Fortfahren?</translation>
    </message>
    <message>
        <source>Confirm</source>
        <translation>Bestätigen</translation>
    </message>
    <message>
        <source>Do you really want to delete all GPS information from all currently loaded (%1) images?</source>
        <translation>Möchten Sie wirklich alle GPS-Informationen aus allen derzeit geladenen Fotos (%1) löschen?</translation>
    </message>
    <message>
        <source>Select gpx file</source>
        <translation>GPX-Datei auswählen</translation>
    </message>
    <message>
        <source>GPX files (*.gpx)</source>
        <translation>GPX-Dateien (*.gpx)</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>It looks like there are no tracks in the selected gpx file. Please select a different one.</source>
        <translation>Die ausgewählte GPX-Datei scheint keine Tracks zu enthalten. Bitte wählen Sie eine andere aus.</translation>
    </message>
    <message>
        <source>Select track</source>
        <translation>Track auswählen</translation>
    </message>
    <message>
        <source>There are multiple tracks inside the selected gpx file. Please select one.</source>
        <translation>Die ausgewählte GPX-Datei enthält mehrere Tracks. Bitte wählen Sie einen aus.</translation>
    </message>
    <message>
        <source>Show the photos and the track on a map (Ctrl+M)</source>
        <translation>Fotos und Track auf einer Karte zeigen (Strg+M)</translation>
    </message>
    <message>
        <source>Map</source>
        <translation>Karte</translation>
    </message>
    <message>
        <source>The map can&apos;t be shown. %1

Everything else works without it. The map needs Marble&apos;s data and plugins (on Debian the packages marble-qt-data and marble-plugins).</source>
        <translation>Die Karte kann nicht angezeigt werden. %1

Alles andere funktioniert auch ohne sie. Die Karte braucht die Daten und Plugins von Marble (unter Debian die Pakete marble-qt-data und marble-plugins).</translation>
    </message>
</context>
<context>
    <name>QObject</name>
    <message>
        <source>Application language changed</source>
        <translation>Sprache der Anwendung geändert</translation>
    </message>
    <message>
        <source>The application language has been changed.
The application needs to be restarted to use the new language.</source>
        <translation>Die Sprache der Anwendung wurde geändert.
Die Anwendung muss neu gestartet werden, um die neue Sprache zu verwenden.</translation>
    </message>
    <message>
        <source>Continue working</source>
        <translation>Weiterarbeiten</translation>
    </message>
    <message>
        <source>Quit now</source>
        <translation>Jetzt beenden</translation>
    </message>
</context>
<context>
    <name>dialog_settings</name>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>Sprache</translation>
    </message>
</context>
<context>
    <name>gpx_parser</name>
    <message>
        <source>Waypoints</source>
        <translation>Wegpunkte</translation>
    </message>
</context>
<context>
    <name>map_window</name>
    <message>
        <source>Map</source>
        <translation>Karte</translation>
    </message>
    <message>
        <source>OpenStreetMap</source>
        <translation>OpenStreetMap</translation>
    </message>
    <message>
        <source>Plain map (offline)</source>
        <translation>Einfache Karte (offline)</translation>
    </message>
    <message>
        <source>OpenStreetMap downloads its tiles when the computer is online; the plain map needs no network</source>
        <translation>OpenStreetMap lädt seine Kacheln, wenn der Computer online ist; die einfache Karte braucht kein Netz</translation>
    </message>
    <message>
        <source>© OpenStreetMap contributors</source>
        <translation>© OpenStreetMap-Mitwirkende</translation>
    </message>
    <message>
        <source>Marble&apos;s map data is missing (%1 in %2).</source>
        <translation>Die Kartendaten von Marble fehlen (%1 in %2).</translation>
    </message>
    <message>
        <source>Marble&apos;s plugins are missing (%1 in %2).</source>
        <translation>Die Plugins von Marble fehlen (%1 in %2).</translation>
    </message>
    <message>
        <source>Own position: %1</source>
        <translation>Eigene Position: %1</translation>
    </message>
    <message>
        <source>From a photo: %1</source>
        <translation>Von einem Foto: %1</translation>
    </message>
    <message>
        <source>From the track: %1</source>
        <translation>Vom Track: %1</translation>
    </message>
    <message>
        <source>Typed: %1</source>
        <translation>Eingegeben: %1</translation>
    </message>
    <message>
        <source>No position: %1</source>
        <translation>Ohne Position: %1</translation>
    </message>
    <message>
        <source>GPS data to be removed: %1</source>
        <translation>GPS-Daten werden entfernt: %1</translation>
    </message>
    <message>
        <source>Position out of range: %1</source>
        <translation>Position außerhalb des Bereichs: %1</translation>
    </message>
    <message>
        <source>Own position</source>
        <translation>Eigene Position</translation>
    </message>
    <message>
        <source>From the photo above: %1</source>
        <translation>Vom Foto darüber: %1</translation>
    </message>
    <message>
        <source>From the photo below: %1</source>
        <translation>Vom Foto darunter: %1</translation>
    </message>
    <message>
        <source>From the GPX track</source>
        <translation>Vom GPX-Track</translation>
    </message>
    <message>
        <source>Typed position</source>
        <translation>Eingegebene Position</translation>
    </message>
    <message>
        <source>Use this position</source>
        <translation>Diese Position verwenden</translation>
    </message>
    <message>
        <source>Show all photos and tracks</source>
        <translation>Alle Fotos und Tracks zeigen</translation>
    </message>
    <message>
        <source>More photos here: %1</source>
        <translation>Weitere Fotos hier: %1</translation>
    </message>
</context>
<context>
    <name>table_data_model</name>
    <message>
        <source>Photo</source>
        <translation>Foto</translation>
    </message>
    <message>
        <source>Recording Date</source>
        <translation>Aufnahmedatum</translation>
    </message>
    <message>
        <source>GPS Tag</source>
        <translation>GPS-Tag</translation>
    </message>
    <message>
        <source>Clear GPS data</source>
        <translation>GPS-Daten löschen</translation>
    </message>
</context>
</TS>
