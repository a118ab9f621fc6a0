<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>app::change_tree</name>
    <message>
        <source>Changes</source>
        <translation>Änderungen</translation>
    </message>
</context>
<context>
    <name>app::changes_controller</name>
    <message>
        <source>&apos;%1&apos; has no version yet, so there is nothing to compare it with.
&quot;Actions &gt; Tag project state…&quot; makes one.</source>
        <translation>‚%1‘ hat noch keine Version, mit der es sich vergleichen ließe.
„Aktionen &gt; Projektstand festhalten…“ legt eine an.</translation>
    </message>
    <message>
        <source>Without the custom script of the project, which was not allowed to run yet.</source>
        <translation>Ohne das eigene Skript des Projekts, dem die Ausführung noch nicht erlaubt wurde.</translation>
    </message>
    <message>
        <source>A step backwards is not judged.</source>
        <translation>Ein Schritt rückwärts wird nicht beurteilt.</translation>
    </message>
    <message>
        <source>no version yet to compare it with</source>
        <translation>noch keine Version, mit der sich vergleichen ließe</translation>
    </message>
    <message>
        <source>changes from %1 to %2</source>
        <translation>Änderungen von %1 bis %2</translation>
    </message>
</context>
<context>
    <name>app::changes_panel</name>
    <message>
        <source>F&amp;rom:</source>
        <translation>&amp;Von:</translation>
    </message>
    <message>
        <source>T&amp;o:</source>
        <translation>&amp;Bis:</translation>
    </message>
    <message>
        <source>Data&amp;base:</source>
        <translation>Date&amp;nbank:</translation>
    </message>
    <message>
        <source>now</source>
        <translation>jetzt</translation>
    </message>
</context>
<context>
    <name>app::changes_view</name>
    <message>
        <source>No changes</source>
        <translation>Keine Änderungen</translation>
    </message>
    <message>
        <source>1 change</source>
        <translation>1 Änderung</translation>
    </message>
    <message>
        <source>%1 changes</source>
        <translation>%1 Änderungen</translation>
    </message>
    <message>
        <source>no statement</source>
        <translation>keine Anweisung</translation>
    </message>
    <message>
        <source>1 statement</source>
        <translation>1 Anweisung</translation>
    </message>
    <message>
        <source>%1 statements</source>
        <translation>%1 Anweisungen</translation>
    </message>
    <message>
        <source>Statements</source>
        <translation>Anweisungen</translation>
    </message>
</context>
<context>
    <name>app::check_controller</name>
    <message>
        <source> (accepted: %1)</source>
        <translation> (akzeptiert: %1)</translation>
    </message>
    <message>
        <source>Korvane - Check</source>
        <translation>Korvane - Prüfung</translation>
    </message>
    <message>
        <source>Check of &apos;%1&apos; with %2</source>
        <translation>Prüfung von „%1“ mit %2</translation>
    </message>
    <message>
        <source>The check failed: see the messages</source>
        <translation>Die Prüfung ist fehlgeschlagen: siehe Meldungen</translation>
    </message>
    <message>
        <source>Findings about the scripts</source>
        <translation>Befunde zu den Skripten</translation>
    </message>
</context>
<context>
    <name>app::database_controller</name>
    <message>
        <source>This changes the model of &apos;%1&apos; to that of %2. Settings and versions are kept.</source>
        <translation>Das Modell von ‚%1‘ wird zu dem von %2. Einstellungen und Versionen bleiben erhalten.</translation>
    </message>
    <message>
        <source>This makes the project &apos;%1&apos; of %2.</source>
        <translation>Aus %2 wird das Projekt ‚%1‘.</translation>
    </message>
    <message>
        <source>Without a place in the model, or made otherwise by scripts: %1. The messages list them after the import.</source>
        <translation>Ohne Platz im Modell oder von Skripten anders angelegt: %1. Die Meldungen führen das nach dem Import auf.</translation>
    </message>
    <message>
        <source>Import of %1</source>
        <translation>Import von %1</translation>
    </message>
    <message>
        <source>Project &apos;%1&apos; imported into %2 (entities: %3; without a place in the model: %4)</source>
        <translation>Projekt ‚%1‘ in %2 importiert (Entitäten: %3; ohne Platz im Modell: %4)</translation>
    </message>
</context>
<context>
    <name>app::database_dialog</name>
    <message>
        <source>SQLite file</source>
        <translation>SQLite-Datei</translation>
    </message>
    <message>
        <source>PostgreSQL</source>
        <translation>PostgreSQL</translation>
    </message>
    <message>
        <source>MariaDB</source>
        <translation>MariaDB</translation>
    </message>
    <message>
        <source>MySQL</source>
        <translation>MySQL</translation>
    </message>
    <message>
        <source>SQL script for SQLite</source>
        <translation>SQL-Skript für SQLite</translation>
    </message>
    <message>
        <source>SQL script for PostgreSQL</source>
        <translation>SQL-Skript für PostgreSQL</translation>
    </message>
    <message>
        <source>SQL script for MariaDB</source>
        <translation>SQL-Skript für MariaDB</translation>
    </message>
    <message>
        <source>&amp;Browse…</source>
        <translation>&amp;Durchsuchen…</translation>
    </message>
    <message>
        <source>&amp;Connect</source>
        <translation>&amp;Verbinden</translation>
    </message>
    <message>
        <source>&amp;All tables</source>
        <translation>&amp;Alle Tabellen</translation>
    </message>
    <message>
        <source>Tables that only &amp;link two others become many-to-many relationships</source>
        <translation>Tabellen, die nur zwei andere ver&amp;knüpfen, werden zu n:m-Beziehungen</translation>
    </message>
    <message>
        <source>&amp;Next…</source>
        <translation>&amp;Weiter…</translation>
    </message>
    <message>
        <source>Korvane - Import from database</source>
        <translation>Korvane - Import aus einer Datenbank</translation>
    </message>
    <message>
        <source>Reads which tables there are; the database stays as it is</source>
        <translation>Liest, welche Tabellen es gibt; die Datenbank bleibt, wie sie ist</translation>
    </message>
    <message>
        <source>&amp;Kind:</source>
        <translation>A&amp;rt:</translation>
    </message>
    <message>
        <source>&amp;File or URL:</source>
        <translation>Datei &amp;oder URL:</translation>
    </message>
    <message>
        <source>&amp;Password:</source>
        <translation>&amp;Passwort:</translation>
    </message>
    <message>
        <source>&amp;Schema:</source>
        <translation>&amp;Schema:</translation>
    </message>
    <message>
        <source>Tables of the database</source>
        <translation>Tabellen der Datenbank</translation>
    </message>
    <message>
        <source>%1 can be read: 1 table</source>
        <translation>%1 lässt sich lesen: 1 Tabelle</translation>
    </message>
    <message>
        <source>%1 can be read: %2 tables</source>
        <translation>%1 lässt sich lesen: %2 Tabellen</translation>
    </message>
</context>
<context>
    <name>app::diagram_contents</name>
    <message>
        <source>… %1 more</source>
        <translation>… %1 weitere</translation>
    </message>
    <message>
        <source>Table: %1</source>
        <translation>Tabelle: %1</translation>
    </message>
    <message>
        <source>Id: %1, version: %2</source>
        <translation>Id: %1, Version: %2</translation>
    </message>
    <message>
        <source>Properties: %1</source>
        <translation>Eigenschaften: %1</translation>
    </message>
    <message>
        <source>The target of %1 is missing</source>
        <translation>Das Ziel von %1 fehlt</translation>
    </message>
    <message>
        <source>Neighbours that are not shown: %1</source>
        <translation>Nicht angezeigte Nachbarn: %1</translation>
    </message>
    <message>
        <source>none or one</source>
        <translation>keine oder eine</translation>
    </message>
    <message>
        <source>exactly one</source>
        <translation>genau eine</translation>
    </message>
    <message>
        <source>any number</source>
        <translation>beliebig viele</translation>
    </message>
    <message>
        <source>%1: %2 for each %3</source>
        <translation>%1: %2 je %3</translation>
    </message>
    <message>
        <source>Inverse: %1.%2</source>
        <translation>Invers: %1.%2</translation>
    </message>
    <message>
        <source>Link table: %1</source>
        <translation>Verknüpfungstabelle: %1</translation>
    </message>
    <message>
        <source>. No relationships are shown.</source>
        <translation>. Beziehungen werden nicht angezeigt.</translation>
    </message>
    <message>
        <source>. Connected with %1.</source>
        <translation>. Verbunden mit %1.</translation>
    </message>
    <message>
        <source>Missing targets: %1</source>
        <translation>Fehlende Ziele: %1</translation>
    </message>
    <message>
        <source>PK</source>
        <comment>primary key</comment>
        <translation>PK</translation>
    </message>
    <message>
        <source>FK</source>
        <comment>foreign key</comment>
        <translation>FK</translation>
    </message>
    <message>
        <source>show fewer</source>
        <translation>weniger zeigen</translation>
    </message>
    <message>
        <source>primary key</source>
        <translation>Primärschlüssel</translation>
    </message>
    <message>
        <source>foreign key</source>
        <translation>Fremdschlüssel</translation>
    </message>
    <message>
        <source>not null</source>
        <translation>nicht NULL</translation>
    </message>
    <message>
        <source>unique</source>
        <translation>eindeutig</translation>
    </message>
    <message>
        <source>indexed</source>
        <translation>indiziert</translation>
    </message>
    <message>
        <source>was %1</source>
        <translation>hieß %1</translation>
    </message>
    <message>
        <source> Shown: %1.</source>
        <translation> Zu sehen: %1.</translation>
    </message>
    <message>
        <source>added</source>
        <translation>hinzugefügt</translation>
    </message>
    <message>
        <source>dropped</source>
        <translation>entfernt</translation>
    </message>
    <message>
        <source>changed</source>
        <translation>geändert</translation>
    </message>
    <message>
        <source>renamed</source>
        <translation>umbenannt</translation>
    </message>
    <message>
        <source>PK FK</source>
        <comment>primary key, foreign key</comment>
        <translation>PK FK</translation>
    </message>
    <message>
        <source>NN</source>
        <comment>not null</comment>
        <translation>NN</translation>
    </message>
    <message>
        <source>UQ</source>
        <comment>unique</comment>
        <translation>UQ</translation>
    </message>
    <message>
        <source>IX</source>
        <comment>index</comment>
        <translation>IX</translation>
    </message>
</context>
<context>
    <name>app::diagram_image</name>
    <message>
        <source>The diagram was not written to %1: %2</source>
        <translation>Das Diagramm wurde nicht nach %1 geschrieben: %2</translation>
    </message>
    <message>
        <source>it cannot be drawn</source>
        <translation>Es kann nicht gezeichnet werden</translation>
    </message>
    <message>
        <source>there is not enough memory for the picture</source>
        <translation>Der Speicher reicht für das Bild nicht aus</translation>
    </message>
    <message>
        <source>The diagram is large: the picture was made smaller, %1 × %2 pixels</source>
        <translation>Das Diagramm ist groß: Das Bild wurde auf %1 × %2 Pixel verkleinert</translation>
    </message>
</context>
<context>
    <name>app::diagram_layout</name>
    <message>
        <source>Graphviz (dot) took longer than %1 s</source>
        <translation>Graphviz (dot) hat länger als %1 s gebraucht</translation>
    </message>
    <message>
        <source>Graphviz (dot) could not be started (%1)</source>
        <translation>Graphviz (dot) konnte nicht gestartet werden (%1)</translation>
    </message>
    <message>
        <source>Graphviz (dot) crashed</source>
        <translation>Graphviz (dot) ist abgestürzt</translation>
    </message>
    <message>
        <source>Graphviz (dot) failed with status %1</source>
        <translation>Graphviz (dot) ist mit dem Status %1 fehlgeschlagen</translation>
    </message>
    <message>
        <source>Graphviz (dot) failed with status %1 (%2)</source>
        <translation>Graphviz (dot) ist mit dem Status %1 fehlgeschlagen (%2)</translation>
    </message>
    <message>
        <source>Graphviz (dot) is not installed; install Graphviz for a layout</source>
        <translation>Graphviz (dot) ist nicht installiert; installieren Sie Graphviz für eine Anordnung</translation>
    </message>
    <message>
        <source>Graphviz (dot) returned too much output</source>
        <translation>Graphviz (dot) hat eine zu große Ausgabe geliefert</translation>
    </message>
    <message>
        <source>Graphviz (dot) returned a layout that could not be read</source>
        <translation>Graphviz (dot) hat eine Anordnung geliefert, die nicht gelesen werden konnte</translation>
    </message>
    <message>
        <source>%1. The entities are arranged in a grid</source>
        <translation>%1. Die Entitäten sind in einem Raster angeordnet</translation>
    </message>
</context>
<context>
    <name>app::diagram_legend</name>
    <message>
        <source>primary key</source>
        <translation>Primärschlüssel</translation>
    </message>
    <message>
        <source>foreign key</source>
        <translation>Fremdschlüssel</translation>
    </message>
    <message>
        <source>not null</source>
        <translation>nicht NULL</translation>
    </message>
    <message>
        <source>unique</source>
        <translation>eindeutig</translation>
    </message>
    <message>
        <source>index</source>
        <translation>Index</translation>
    </message>
    <message>
        <source>relationship without a column</source>
        <translation>Beziehung ohne Spalte</translation>
    </message>
</context>
<context>
    <name>app::diagram_panel</name>
    <message>
        <source>Laying out…</source>
        <translation>Wird angeordnet…</translation>
    </message>
    <message>
        <source>No project is open.</source>
        <translation>Es ist kein Projekt geöffnet.</translation>
    </message>
    <message>
        <source>The project has no entities.</source>
        <translation>Das Projekt hat keine Entitäten.</translation>
    </message>
    <message>
        <source>Select an entity in the tree to see it and its neighbours here.</source>
        <translation>Wählen Sie im Baum eine Entität, um sie und ihre Nachbarn hier zu sehen.</translation>
    </message>
    <message>
        <source>1 entity</source>
        <translation>1 Entität</translation>
    </message>
    <message>
        <source>All %1 entities</source>
        <translation>Alle %1 Entitäten</translation>
    </message>
    <message>
        <source>%1 of %2 entities</source>
        <translation>%1 von %2 Entitäten</translation>
    </message>
    <message>
        <source>%1 of %2 entities: the neighbours of %3</source>
        <translation>%1 von %2 Entitäten: die Nachbarn von %3</translation>
    </message>
    <message>
        <source>%1 of %2 entities: the neighbours of %3 up to distance %4</source>
        <translation>%1 von %2 Entitäten: die Nachbarn von %3 bis zum Abstand %4</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%1&#xa0;%</translation>
    </message>
    <message>
        <source>There is no diagram to save.</source>
        <translation>Es gibt kein Diagramm zu speichern.</translation>
    </message>
    <message>
        <source>Diagram of the project</source>
        <translation>Diagramm des Projekts</translation>
    </message>
    <message>
        <source>Zoom &amp;in</source>
        <translation>Ver&amp;größern</translation>
    </message>
    <message>
        <source>Zoom &amp;out</source>
        <translation>Verk&amp;leinern</translation>
    </message>
    <message>
        <source>&amp;Fit</source>
        <translation>Ein&amp;passen</translation>
    </message>
    <message>
        <source>Show the whole diagram</source>
        <translation>Das ganze Diagramm anzeigen</translation>
    </message>
    <message>
        <source>&amp;Actual size (100 %)</source>
        <translation>&amp;Originalgröße (100&#xa0;%)</translation>
    </message>
    <message>
        <source>&amp;Save diagram…</source>
        <translation>Diagramm &amp;speichern…</translation>
    </message>
    <message>
        <source>Save the diagram as an SVG or PNG file</source>
        <translation>Das Diagramm als SVG- oder PNG-Datei speichern</translation>
    </message>
    <message>
        <source>&amp;Distance</source>
        <translation>&amp;Abstand</translation>
    </message>
    <message>
        <source>Distance of the neighbours that are shown</source>
        <translation>Abstand der gezeigten Nachbarn</translation>
    </message>
    <message>
        <source>Diagram</source>
        <translation>Diagramm</translation>
    </message>
    <message>
        <source>Distance:</source>
        <translation>Abstand:</translation>
    </message>
    <message>
        <source>What the diagram shows</source>
        <translation>Inhalt des Diagramms</translation>
    </message>
    <message>
        <source>Note on the diagram</source>
        <translation>Hinweis zum Diagramm</translation>
    </message>
    <message>
        <source>Zoom</source>
        <translation>Zoom</translation>
    </message>
    <message>
        <source>Save diagram</source>
        <translation>Diagramm speichern</translation>
    </message>
    <message>
        <source>PNG picture (*.png)</source>
        <translation>PNG-Bild (*.png)</translation>
    </message>
    <message>
        <source>SVG picture (*.svg)</source>
        <translation>SVG-Bild (*.svg)</translation>
    </message>
    <message>
        <source>Korvane - Diagram</source>
        <translation>Korvane - Diagramm</translation>
    </message>
    <message>
        <source>Saved as %1</source>
        <translation>Gespeichert als %1</translation>
    </message>
    <message>
        <source>; not shown: %1</source>
        <translation>; nicht angezeigt: %1</translation>
    </message>
    <message>
        <source>Enlarge the diagram</source>
        <translation>Das Diagramm vergrößern</translation>
    </message>
    <message>
        <source>Shrink the diagram</source>
        <translation>Das Diagramm verkleinern</translation>
    </message>
    <message>
        <source>Show the diagram at 100 %</source>
        <translation>Das Diagramm mit 100&#xa0;% anzeigen</translation>
    </message>
    <message>
        <source>How many relationships away from the selected entity to show (large projects only)</source>
        <translation>Bis zu wie vielen Beziehungen Abstand von der ausgewählten Entität angezeigt wird (nur große Projekte)</translation>
    </message>
    <message>
        <source>%1 already exists. Replace it?</source>
        <translation>%1 ist bereits vorhanden. Soll die Datei ersetzt werden?</translation>
    </message>
    <message>
        <source>Legend: %1</source>
        <translation>Legende: %1</translation>
    </message>
    <message>
        <source>Mar&amp;k changes</source>
        <translation>Änderungen &amp;hervorheben</translation>
    </message>
    <message>
        <source>Mark what changed between the versions that are chosen under Changes</source>
        <translation>Hervorheben, was sich zwischen den Versionen geändert hat, die unter Änderungen gewählt sind</translation>
    </message>
    <message>
        <source>Legend</source>
        <translation>Legende</translation>
    </message>
</context>
<context>
    <name>app::diagram_view</name>
    <message>
        <source>No entity is selected.</source>
        <translation>Es ist keine Entität ausgewählt.</translation>
    </message>
    <message>
        <source>Selected: %1</source>
        <translation>Ausgewählt: %1</translation>
    </message>
</context>
<context>
    <name>app::export_controller</name>
    <message>
        <source>Korvane - Settings</source>
        <translation>Korvane - Einstellungen</translation>
    </message>
    <message>
        <source>Korvane - Export</source>
        <translation>Korvane - Export</translation>
    </message>
    <message>
        <source>Export of &apos;%1&apos; with %2</source>
        <translation>Export von ‚%1‘ mit %2</translation>
    </message>
    <message>
        <source>Korvane - Custom script</source>
        <translation>Korvane - Eigenes Skript</translation>
    </message>
    <message>
        <source>The project names a custom script, which runs with your rights:
%1

Do you want to run it? With No the export leaves it out.</source>
        <translation>Das Projekt nennt ein eigenes Skript, das mit Ihren Rechten läuft:
%1

Möchten Sie es ausführen? Bei Nein lässt der Export es weg.</translation>
    </message>
    <message>
        <source>Nothing was written: evolution scripts need a tagged version. Use &quot;Actions &gt; Tag project state…&quot; first</source>
        <translation>Es wurde nichts geschrieben: Für Evolutionsskripte muss erst eine Version festgehalten werden. Verwenden Sie zuerst „Aktionen &gt; Projektstand festhalten…“</translation>
    </message>
    <message>
        <source>Nothing was written</source>
        <translation>Es wurde nichts geschrieben</translation>
    </message>
    <message>
        <source>The export failed</source>
        <translation>Der Export ist fehlgeschlagen</translation>
    </message>
    <message>
        <source>The export failed: see the messages</source>
        <translation>Der Export ist fehlgeschlagen: siehe Meldungen</translation>
    </message>
    <message>
        <source>The export was cancelled; nothing was written</source>
        <translation>Der Export wurde abgebrochen; es wurde nichts geschrieben</translation>
    </message>
    <message>
        <source>1 script written to %1</source>
        <translation>1 Skript nach %1 geschrieben</translation>
    </message>
    <message>
        <source>%1 scripts written to %2</source>
        <translation>%1 Skripte nach %2 geschrieben</translation>
    </message>
    <message>
        <source>The export was cancelled; 1 script is complete</source>
        <translation>Der Export wurde abgebrochen; 1 Skript ist vollständig</translation>
    </message>
    <message>
        <source>The export was cancelled; %1 scripts are complete</source>
        <translation>Der Export wurde abgebrochen; %1 Skripte sind vollständig</translation>
    </message>
</context>
<context>
    <name>app::export_menu</name>
    <message>
        <source>&amp;Export</source>
        <translation>&amp;Export</translation>
    </message>
    <message>
        <source>%1 %2: %3</source>
        <translation>%1 %2: %3</translation>
    </message>
    <message>
        <source>Hold Shift to start the script debugger.</source>
        <translation>Halten Sie die Umschalttaste gedrückt, um den Skript-Debugger zu starten.</translation>
    </message>
    <message>
        <source>No plugin was found</source>
        <translation>Es wurde kein Plugin gefunden</translation>
    </message>
    <message>
        <source>&amp;Check</source>
        <translation>&amp;Prüfen</translation>
    </message>
    <message>
        <source>Foretell what the database will do with the scripts; nothing is written</source>
        <translation>Vorhersagen, was die Datenbank mit den Skripten tun wird; nichts wird geschrieben</translation>
    </message>
    <message>
        <source>&amp;Settings…</source>
        <translation>&amp;Einstellungen…</translation>
    </message>
    <message>
        <source>Edit the settings of the export that are stored in the project</source>
        <translation>Die im Projekt gespeicherten Einstellungen des Exports bearbeiten</translation>
    </message>
</context>
<context>
    <name>app::export_run</name>
    <message>
        <source>The export failed; the plug-in gave no reason</source>
        <translation>Der Export ist fehlgeschlagen; das Plugin hat keinen Grund genannt</translation>
    </message>
</context>
<context>
    <name>app::find_bar</name>
    <message>
        <source>Match case</source>
        <translation>Groß/klein beachten</translation>
    </message>
    <message>
        <source>Text to find</source>
        <translation>Gesuchter Text</translation>
    </message>
    <message>
        <source>Matches</source>
        <translation>Treffer</translation>
    </message>
    <message>
        <source>Find:</source>
        <translation>Suchen:</translation>
    </message>
    <message>
        <source>Previous</source>
        <translation>Vorheriger</translation>
    </message>
    <message>
        <source>Previous match (Shift+F3)</source>
        <translation>Vorheriger Treffer (Umschalt+F3)</translation>
    </message>
    <message>
        <source>Next</source>
        <translation>Nächster</translation>
    </message>
    <message>
        <source>Next match (F3)</source>
        <translation>Nächster Treffer (F3)</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Close the search (Escape)</source>
        <translation>Die Suche schließen (Esc)</translation>
    </message>
    <message>
        <source>No match</source>
        <translation>Kein Treffer</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <comment>matches</comment>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>1 match</source>
        <translation>1 Treffer</translation>
    </message>
    <message>
        <source>%1 matches</source>
        <translation>%1 Treffer</translation>
    </message>
</context>
<context>
    <name>app::help_commands</name>
    <message>
        <source>Korvane - Manual</source>
        <translation>Korvane - Handbuch</translation>
    </message>
    <message>
        <source>The manual could not be opened. Open this file in a browser: %1</source>
        <translation>Das Handbuch konnte nicht geöffnet werden. Öffnen Sie diese Datei im Browser: %1</translation>
    </message>
    <message>
        <source>Korvane - Scripts</source>
        <translation>Korvane - Skripte</translation>
    </message>
    <message>
        <source>The folder could not be opened: %1</source>
        <translation>Der Ordner konnte nicht geöffnet werden: %1</translation>
    </message>
    <message>
        <source>&lt;h3&gt;Korvane %1&lt;/h3&gt;&lt;p&gt;Trustworthy migration scripts from a class model.&lt;/p&gt;&lt;p&gt;Runs on Qt %2. MIT license.&lt;/p&gt;</source>
        <translation>&lt;h3&gt;Korvane %1&lt;/h3&gt;&lt;p&gt;Verlässliche Migrationsskripte aus einem Klassenmodell.&lt;/p&gt;&lt;p&gt;Läuft mit Qt %2. MIT-Lizenz.&lt;/p&gt;</translation>
    </message>
    <message>
        <source>Korvane - About</source>
        <translation>Korvane - Über</translation>
    </message>
</context>
<context>
    <name>app::import_dialog</name>
    <message>
        <source>Import</source>
        <translation>Importieren</translation>
    </message>
    <message>
        <source>What there is to know</source>
        <translation>Was zu wissen ist</translation>
    </message>
</context>
<context>
    <name>app::message_list</name>
    <message>
        <source>Error: %1</source>
        <translation>Fehler: %1</translation>
    </message>
    <message>
        <source>Warning: %1</source>
        <translation>Warnung: %1</translation>
    </message>
    <message>
        <source>%1 older lines were dropped</source>
        <translation>%1 ältere Zeilen wurden verworfen</translation>
    </message>
    <message>
        <source>Note: %1</source>
        <translation>Hinweis: %1</translation>
    </message>
    <message>
        <source>Accepted: %1</source>
        <translation>Akzeptiert: %1</translation>
    </message>
</context>
<context>
    <name>app::message_panel</name>
    <message>
        <source>No messages</source>
        <translation>Keine Meldungen</translation>
    </message>
    <message>
        <source>1 message</source>
        <translation>1 Meldung</translation>
    </message>
    <message>
        <source>%1 messages</source>
        <translation>%1 Meldungen</translation>
    </message>
    <message>
        <source>no errors</source>
        <translation>keine Fehler</translation>
    </message>
    <message>
        <source>1 error</source>
        <translation>1 Fehler</translation>
    </message>
    <message>
        <source>%1 errors</source>
        <translation>%1 Fehler</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <comment>messages, errors</comment>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>Messages</source>
        <translation>Meldungen</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Fortschritt</translation>
    </message>
    <message>
        <source>Errors only</source>
        <translation>Nur Fehler</translation>
    </message>
    <message>
        <source>Show errors only</source>
        <translation>Nur Fehler anzeigen</translation>
    </message>
    <message>
        <source>Copy all</source>
        <translation>Alles kopieren</translation>
    </message>
    <message>
        <source>Copy all messages shown</source>
        <translation>Alle gezeigten Meldungen kopieren</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Leeren</translation>
    </message>
    <message>
        <source>Clear the messages</source>
        <translation>Alle Meldungen löschen</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Fertig</translation>
    </message>
    <message>
        <source>Failed</source>
        <translation>Fehlgeschlagen</translation>
    </message>
    <message>
        <source>No findings</source>
        <translation>Keine Befunde</translation>
    </message>
    <message>
        <source>1 warning</source>
        <translation>1 Warnung</translation>
    </message>
    <message>
        <source>1 note</source>
        <translation>1 Hinweis</translation>
    </message>
    <message>
        <source>%1 accepted</source>
        <translation>%1 akzeptiert</translation>
    </message>
    <message>
        <source>%1 warnings</source>
        <translation>%1 Warnungen</translation>
    </message>
    <message>
        <source>%1 notes</source>
        <translation>%1 Hinweise</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Cancel the export</source>
        <translation>Den Export abbrechen</translation>
    </message>
    <message>
        <source>End the export before its next statement</source>
        <translation>Den Export vor der nächsten Anweisung beenden</translation>
    </message>
</context>
<context>
    <name>app::new_project</name>
    <message>
        <source>%1: cannot be written (%2)</source>
        <translation>%1: kann nicht geschrieben werden (%2)</translation>
    </message>
    <message>
        <source>%1: cannot be copied to %2 (%3)</source>
        <translation>%1: kann nicht nach %2 kopiert werden (%3)</translation>
    </message>
</context>
<context>
    <name>app::plugin_choice</name>
    <message>
        <source>%1: not used, %2 is a plugin of the same name</source>
        <translation>%1: nicht verwendet, %2 ist ein Plugin mit demselben Namen</translation>
    </message>
</context>
<context>
    <name>app::project_commands</name>
    <message>
        <source>Korvane - Open</source>
        <translation>Korvane - Öffnen</translation>
    </message>
    <message>
        <source>%1 opened</source>
        <translation>%1 geöffnet</translation>
    </message>
    <message>
        <source>Projects (*.korv)</source>
        <translation>Projekte (*.korv)</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Korvane - Import model</source>
        <translation>Korvane - Modell importieren</translation>
    </message>
    <message>
        <source>Models in text form (*.json)</source>
        <translation>Modelle in Textform (*.json)</translation>
    </message>
    <message>
        <source>Korvane - Import %1 into the project file</source>
        <translation>Korvane - %1 in die Projektdatei importieren</translation>
    </message>
    <message>
        <source>&apos;%1&apos; already exists.
Replace its model with the one from &apos;%2&apos;? Settings and versions are kept.</source>
        <translation>‚%1‘ ist bereits vorhanden.
Soll das Modell durch das aus ‚%2‘ ersetzt werden? Einstellungen und Versionen bleiben erhalten.</translation>
    </message>
    <message>
        <source>Import of %1</source>
        <translation>Import von %1</translation>
    </message>
    <message>
        <source>Project &apos;%1&apos; imported into %2 (entities: %3)</source>
        <translation>Projekt ‚%1‘ in %2 importiert (Entitäten: %3)</translation>
    </message>
    <message>
        <source>Korvane - Save model as text</source>
        <translation>Korvane - Modell als Text speichern</translation>
    </message>
    <message>
        <source>%1 is a project file and was not overwritten. Choose a name that ends in .json</source>
        <translation>%1 ist eine Projektdatei und wurde nicht überschrieben. Wählen Sie einen Namen, der auf .json endet</translation>
    </message>
    <message>
        <source>%1 written</source>
        <translation>%1 geschrieben</translation>
    </message>
    <message>
        <source>Korvane - Reload</source>
        <translation>Korvane - Neu laden</translation>
    </message>
    <message>
        <source>%1 is up to date</source>
        <translation>%1 ist auf dem neuesten Stand</translation>
    </message>
    <message>
        <source>Version %1 of %2 tagged</source>
        <translation>Version %1 von %2 festgehalten</translation>
    </message>
    <message>
        <source>Version %1 of %2 tagged; the model has not changed since version %3</source>
        <translation>Version %1 von %2 festgehalten; das Modell hat sich seit Version %3 nicht geändert</translation>
    </message>
    <message>
        <source>Korvane - New project</source>
        <translation>Korvane - Neues Projekt</translation>
    </message>
    <message>
        <source>Korvane - Sample project</source>
        <translation>Korvane - Beispielprojekt</translation>
    </message>
    <message>
        <source>%1 is there already; choose another name</source>
        <translation>%1 ist schon da; wählen Sie einen anderen Namen</translation>
    </message>
    <message>
        <source>New project</source>
        <translation>Neues Projekt</translation>
    </message>
    <message>
        <source>%1 is the model as text: edit it, then import it again</source>
        <translation>%1 ist das Modell als Text: bearbeiten Sie ihn und importieren Sie ihn dann wieder</translation>
    </message>
</context>
<context>
    <name>app::project_tree</name>
    <message>
        <source>Model</source>
        <translation>Modell</translation>
    </message>
    <message>
        <source>Filter</source>
        <translation>Filter</translation>
    </message>
    <message>
        <source>Entities, properties and relationships</source>
        <translation>Entitäten, Eigenschaften und Beziehungen</translation>
    </message>
    <message>
        <source>No project is open</source>
        <translation>Es ist kein Projekt geöffnet</translation>
    </message>
    <message>
        <source>The project has no entities</source>
        <translation>Das Projekt hat keine Entitäten</translation>
    </message>
    <message>
        <source>Nothing matches &apos;%1&apos;</source>
        <translation>Nichts passt zu ‚%1‘</translation>
    </message>
    <message>
        <source>%1 of 1 entity</source>
        <translation>%1 von 1 Entität</translation>
    </message>
    <message>
        <source>%1 of %2 entities</source>
        <translation>%1 von %2 Entitäten</translation>
    </message>
    <message>
        <source>1 entity</source>
        <translation>1 Entität</translation>
    </message>
    <message>
        <source>%1 entities</source>
        <translation>%1 Entitäten</translation>
    </message>
    <message>
        <source>Show only what has all of these words in its name, type, values, table or columns, or in those of its entity</source>
        <translation>Nur anzeigen, was alle diese Wörter in Name, Typ, Werten, Tabelle oder Spalten hat, oder in denen seiner Entität</translation>
    </message>
</context>
<context>
    <name>app::project_tree_text</name>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Typ</translation>
    </message>
    <message>
        <source>In the database</source>
        <translation>Datenbank</translation>
    </message>
    <message>
        <source>%1, inverse of %2</source>
        <translation>%1, invers zu %2</translation>
    </message>
    <message>
        <source>link table %1</source>
        <translation>Verknüpfungstabelle %1</translation>
    </message>
    <message>
        <source>Table: %1</source>
        <translation>Tabelle: %1</translation>
    </message>
    <message>
        <source>Id: %1</source>
        <translation>Id: %1</translation>
    </message>
    <message>
        <source>Version: %1</source>
        <translation>Version: %1</translation>
    </message>
    <message>
        <source>Soft-delete column: %1</source>
        <translation>Soft-Delete-Spalte: %1</translation>
    </message>
    <message>
        <source>Type: %1</source>
        <translation>Typ: %1</translation>
    </message>
    <message>
        <source>Transient: it is not stored in the database</source>
        <translation>Transient: nicht in der Datenbank gespeichert</translation>
    </message>
    <message>
        <source>In the database: %1</source>
        <translation>In der Datenbank: %1</translation>
    </message>
    <message>
        <source>In the database: no column</source>
        <translation>In der Datenbank: keine Spalte</translation>
    </message>
    <message>
        <source>SQL type: %1</source>
        <translation>SQL-Typ: %1</translation>
    </message>
    <message>
        <source>Relationship: %1</source>
        <translation>Beziehung: %1</translation>
    </message>
    <message>
        <source>Inverse of: %1</source>
        <translation>Invers zu: %1</translation>
    </message>
    <message>
        <source>Link table: %1</source>
        <translation>Verknüpfungstabelle: %1</translation>
    </message>
    <message>
        <source>entity %1</source>
        <translation>Entität %1</translation>
    </message>
    <message>
        <source>%1 to %2</source>
        <translation>%1 zu %2</translation>
    </message>
    <message>
        <source>relationship to %1</source>
        <translation>Beziehung zu %1</translation>
    </message>
    <message>
        <source>missing entity %1</source>
        <translation>fehlende Entität %1</translation>
    </message>
    <message>
        <source>one-to-one</source>
        <translation>1:1</translation>
    </message>
    <message>
        <source>one-to-many</source>
        <translation>1:n</translation>
    </message>
    <message>
        <source>many-to-one</source>
        <translation>n:1</translation>
    </message>
    <message>
        <source>many-to-many</source>
        <translation>n:m</translation>
    </message>
    <message>
        <source>(no type)</source>
        <translation>(kein Typ)</translation>
    </message>
    <message>
        <source>(transient)</source>
        <translation>(transient)</translation>
    </message>
    <message>
        <source>(no column)</source>
        <translation>(keine Spalte)</translation>
    </message>
    <message>
        <source>unique</source>
        <translation>eindeutig</translation>
    </message>
    <message>
        <source>indexed</source>
        <translation>indiziert</translation>
    </message>
    <message>
        <source>not null</source>
        <translation>nicht NULL</translation>
    </message>
    <message>
        <source>transient</source>
        <translation>transient</translation>
    </message>
    <message>
        <source>Primary key: %1 (%2)</source>
        <translation>Primärschlüssel: %1 (%2)</translation>
    </message>
    <message>
        <source>Primary key: none</source>
        <translation>Primärschlüssel: keiner</translation>
    </message>
    <message>
        <source>primary key</source>
        <translation>Primärschlüssel</translation>
    </message>
</context>
<context>
    <name>app::project_tree_view</name>
    <message>
        <source>&amp;Copy name</source>
        <translation>Namen &amp;kopieren</translation>
    </message>
    <message>
        <source>&amp;Go to target</source>
        <translation>&amp;Zum Ziel gehen</translation>
    </message>
    <message>
        <source>&amp;Expand all</source>
        <translation>Alles &amp;aufklappen</translation>
    </message>
    <message>
        <source>C&amp;ollapse all</source>
        <translation>Alles z&amp;uklappen</translation>
    </message>
</context>
<context>
    <name>app::project_window</name>
    <message>
        <source>Entities: %1   Properties: %2   Relationships: %3</source>
        <translation>Entitäten: %1   Eigenschaften: %2   Beziehungen: %3</translation>
    </message>
    <message>
        <source>The window closes when the export has ended</source>
        <translation>Das Fenster schließt sich, sobald der Export beendet ist</translation>
    </message>
    <message>
        <source>Korvane - Project file</source>
        <translation>Korvane - Projektdatei</translation>
    </message>
    <message>
        <source>Korvane</source>
        <translation>Korvane</translation>
    </message>
    <message>
        <source>%1, cannot be read any more</source>
        <translation>%1, nicht mehr lesbar</translation>
    </message>
    <message>
        <source>%1 (%2) - Korvane</source>
        <translation>%1 (%2) - Korvane</translation>
    </message>
    <message>
        <source>%1

The window still shows the project as last read. To keep its model, use &quot;File &gt; Save model as text…&quot;.</source>
        <translation>%1

Das Fenster zeigt weiterhin das Projekt, wie es zuletzt gelesen wurde. Um sein Modell zu behalten, verwenden Sie „Datei &gt; Modell als Text speichern…“.</translation>
    </message>
    <message>
        <source>Plugins</source>
        <translation>Plugins</translation>
    </message>
    <message>
        <source>Some plugins could not be loaded; see the messages</source>
        <translation>Einige Plugins konnten nicht geladen werden; siehe die Meldungen</translation>
    </message>
    <message>
        <source>The script debugger holds the export</source>
        <translation>Der Skript-Debugger hält den Export an</translation>
    </message>
    <message>
        <source>&amp;Go to the debugger</source>
        <translation>Zum Deb&amp;ugger</translation>
    </message>
</context>
<context>
    <name>app::project_work</name>
    <message>
        <source>standard input</source>
        <translation>Standardeingabe</translation>
    </message>
    <message>
        <source>cannot be read (%1)</source>
        <translation>kann nicht gelesen werden (%1)</translation>
    </message>
    <message>
        <source>is too large for the text form of a project</source>
        <translation>ist zu groß für die Textform eines Projekts</translation>
    </message>
    <message>
        <source>does not exist; check the name</source>
        <translation>existiert nicht; prüfen Sie den Namen</translation>
    </message>
    <message>
        <source>cannot be read (%1); check the name</source>
        <translation>kann nicht gelesen werden (%1); prüfen Sie den Namen</translation>
    </message>
    <message>
        <source>is %1, not a file with the text form of a project</source>
        <translation>ist %1, keine Datei mit der Textform eines Projekts</translation>
    </message>
    <message>
        <source>%1: warning: %2</source>
        <translation>%1: Warnung: %2</translation>
    </message>
    <message>
        <source>cannot be written (%1)</source>
        <translation>kann nicht geschrieben werden (%1)</translation>
    </message>
</context>
<context>
    <name>app::recent_menu</name>
    <message>
        <source>Open &amp;recent</source>
        <translation>&amp;Zuletzt geöffnet</translation>
    </message>
    <message>
        <source>No recent projects</source>
        <translation>Keine zuletzt verwendeten Projekte</translation>
    </message>
    <message>
        <source>&amp;Clear this list</source>
        <translation>Diese &amp;Liste leeren</translation>
    </message>
</context>
<context>
    <name>app::script_panel</name>
    <message>
        <source>Scripts</source>
        <translation>Skripte</translation>
    </message>
    <message>
        <source>The scripts of an export appear here</source>
        <translation>Hier erscheinen die Skripte eines Exports</translation>
    </message>
    <message>
        <source>Script</source>
        <translation>Skript</translation>
    </message>
    <message>
        <source>Wrap lines</source>
        <translation>Zeilen umbrechen</translation>
    </message>
    <message>
        <source>Wrap long lines</source>
        <translation>Lange Zeilen umbrechen</translation>
    </message>
    <message>
        <source>Script:</source>
        <translation>Skript:</translation>
    </message>
    <message>
        <source>Copy script</source>
        <translation>Skript kopieren</translation>
    </message>
    <message>
        <source>Copy the whole script</source>
        <translation>Das ganze Skript kopieren</translation>
    </message>
    <message>
        <source>Open folder</source>
        <translation>Ordner öffnen</translation>
    </message>
    <message>
        <source>Open the folder where the script is</source>
        <translation>Den Ordner öffnen, in dem das Skript liegt</translation>
    </message>
</context>
<context>
    <name>app::script_text</name>
    <message>
        <source>This statement takes values or a table away</source>
        <translation>Diese Anweisung entfernt Werte oder eine Tabelle</translation>
    </message>
</context>
<context>
    <name>app::script_view</name>
    <message>
        <source>Script %1</source>
        <translation>Skript %1</translation>
    </message>
    <message>
        <source>File of the script</source>
        <translation>Datei des Skripts</translation>
    </message>
    <message>
        <source>The file is not there. It may have been moved or deleted.</source>
        <translation>Die Datei ist nicht vorhanden. Vielleicht wurde sie verschoben oder gelöscht.</translation>
    </message>
    <message>
        <source>The file cannot be read: %1</source>
        <translation>Die Datei kann nicht gelesen werden: %1</translation>
    </message>
    <message>
        <source>The script is very large. Only the first %1 of %2 are shown here.</source>
        <translation>Das Skript ist sehr groß. Hier werden nur die ersten %1 von %2 angezeigt.</translation>
    </message>
    <message>
        <source>Lines of more than %1 characters are cut off here.</source>
        <translation>Zeilen mit mehr als %1 Zeichen sind hier abgeschnitten.</translation>
    </message>
    <message>
        <source>Only the first %1 characters of a line are coloured.</source>
        <translation>Nur die ersten %1 Zeichen einer Zeile sind farbig.</translation>
    </message>
    <message>
        <source>1 line</source>
        <translation>1 Zeile</translation>
    </message>
    <message>
        <source>%1 lines</source>
        <translation>%1 Zeilen</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <comment>lines, size</comment>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>This is a folder or a special file, not a script.</source>
        <translation>Das ist ein Ordner oder eine besondere Datei, kein Skript.</translation>
    </message>
    <message>
        <source>The file has bytes that are not UTF-8. They are shown as %1.</source>
        <translation>Die Datei enthält Bytes, die kein UTF-8 sind. Sie werden als %1 angezeigt.</translation>
    </message>
</context>
<context>
    <name>app::tag_dialog</name>
    <message>
        <source>Korvane - Tag project state</source>
        <translation>Korvane - Projektstand festhalten</translation>
    </message>
    <message>
        <source>for example: first release</source>
        <translation>zum Beispiel: erste Veröffentlichung</translation>
    </message>
    <message>
        <source>Tag</source>
        <translation>Festhalten</translation>
    </message>
    <message>
        <source>Description</source>
        <translation>Beschreibung</translation>
    </message>
    <message>
        <source>&amp;Description:</source>
        <translation>&amp;Beschreibung:</translation>
    </message>
    <message>
        <source>This tags the current state of &apos;%1&apos;, its model and its settings, as version %2. Evolution scripts lead from one version to the next.</source>
        <translation>Damit wird der jetzige Stand von ‚%1‘, sein Modell und seine Einstellungen, als Version %2 festgehalten. Evolutionsskripte führen von einer Version zur nächsten.</translation>
    </message>
</context>
<context>
    <name>app::versions_dialog</name>
    <message>
        <source>Korvane - Versions</source>
        <translation>Korvane - Versionen</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>Version</translation>
    </message>
    <message>
        <source>Tagged</source>
        <translation>Festgehalten am</translation>
    </message>
    <message>
        <source>Versions of the project</source>
        <translation>Versionen des Projekts</translation>
    </message>
    <message>
        <source>&apos;%1&apos; has no version yet. &quot;Actions &gt; Tag project state…&quot; makes one.</source>
        <translation>‚%1‘ hat noch keine Version. „Aktionen &gt; Projektstand festhalten…“ legt eine an.</translation>
    </message>
    <message>
        <source>Versions of &apos;%1&apos;, the newest first:</source>
        <translation>Versionen von ‚%1‘, die neueste zuerst:</translation>
    </message>
    <message>
        <source>Description</source>
        <translation>Beschreibung</translation>
    </message>
    <message>
        <source>&amp;Compare</source>
        <translation>&amp;Vergleichen</translation>
    </message>
    <message>
        <source>Shows what changed between two selected versions, or since the one that is selected</source>
        <translation>Zeigt, was sich zwischen zwei ausgewählten Versionen oder seit der ausgewählten geändert hat</translation>
    </message>
</context>
<context>
    <name>app::welcome_page</name>
    <message>
        <source>Open a project…</source>
        <translation>Projekt öffnen…</translation>
    </message>
    <message>
        <source>A project file (*.korv). You can drop one on this window as well.</source>
        <translation>Eine Projektdatei (*.korv). Sie können sie auch auf dieses Fenster ziehen.</translation>
    </message>
    <message>
        <source>Korvane</source>
        <translation>Korvane</translation>
    </message>
    <message>
        <source>Migration scripts from a class model</source>
        <translation>Migrationsskripte aus einem Klassenmodell</translation>
    </message>
    <message>
        <source>Recent projects</source>
        <translation>Zuletzt geöffnete Projekte</translation>
    </message>
    <message>
        <source>Import a model…</source>
        <translation>Modell importieren…</translation>
    </message>
    <message>
        <source>Creates a project from a model in text form (*.json), or replaces a project&apos;s model.</source>
        <translation>Erstellt aus einem Modell in Textform (*.json) ein Projekt oder ersetzt das Modell eines Projekts.</translation>
    </message>
    <message>
        <source>Begin a new project…</source>
        <translation>Ein neues Projekt beginnen…</translation>
    </message>
    <message>
        <source>Writes a small model as text, to be edited and imported again, and the project of it.</source>
        <translation>Schreibt ein kleines Modell als Text, zum Bearbeiten und Wiederimportieren, und das Projekt dazu.</translation>
    </message>
    <message>
        <source>Try the sample…</source>
        <translation>Das Beispiel ausprobieren…</translation>
    </message>
    <message>
        <source>A copy of a project with three versions and changes since.</source>
        <translation>Eine Kopie eines Projekts mit drei Versionen und Änderungen seither.</translation>
    </message>
    <message>
        <source>Read the manual</source>
        <translation>Das Handbuch lesen</translation>
    </message>
    <message>
        <source>Ten minutes from a model to migration scripts, in your browser.</source>
        <translation>In zehn Minuten vom Modell zu Migrationsskripten, im Browser.</translation>
    </message>
    <message>
        <source>Import from a database…</source>
        <translation>Aus einer Datenbank importieren…</translation>
    </message>
    <message>
        <source>The tables of a SQLite file, of a PostgreSQL, MariaDB or MySQL server, or of a script become the model.</source>
        <translation>Die Tabellen einer SQLite-Datei, eines Servers von PostgreSQL, MariaDB oder MySQL oder eines Skripts werden zum Modell.</translation>
    </message>
</context>
<context>
    <name>app::whole_file</name>
    <message>
        <source>it exists, but is not a file</source>
        <translation>unter diesem Namen gibt es etwas, das keine Datei ist</translation>
    </message>
</context>
<context>
    <name>app::window_menus</name>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;Open…</source>
        <translation>Ö&amp;ffnen…</translation>
    </message>
    <message>
        <source>Open a project file</source>
        <translation>Eine Projektdatei öffnen</translation>
    </message>
    <message>
        <source>Re&amp;load</source>
        <translation>Neu &amp;laden</translation>
    </message>
    <message>
        <source>Read the project file again</source>
        <translation>Die Projektdatei erneut lesen</translation>
    </message>
    <message>
        <source>&amp;Close project</source>
        <translation>Projekt &amp;schließen</translation>
    </message>
    <message>
        <source>Close the project</source>
        <translation>Das Projekt schließen</translation>
    </message>
    <message>
        <source>&amp;Import model…</source>
        <translation>Modell &amp;importieren…</translation>
    </message>
    <message>
        <source>Create a project from a model in text form, or replace a project&apos;s model</source>
        <translation>Aus einem Modell in Textform ein Projekt erstellen oder das Modell eines Projekts ersetzen</translation>
    </message>
    <message>
        <source>&amp;Save model as text…</source>
        <translation>Modell als &amp;Text speichern…</translation>
    </message>
    <message>
        <source>Write the model as text, to edit it or to keep it under version control</source>
        <translation>Das Modell als Text schreiben, um es zu bearbeiten oder in einer Versionsverwaltung zu führen</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>&amp;Actions</source>
        <translation>&amp;Aktionen</translation>
    </message>
    <message>
        <source>&amp;Tag project state…</source>
        <translation>Projektstand &amp;festhalten…</translation>
    </message>
    <message>
        <source>Tag the current state of the project as a new version</source>
        <translation>Den jetzigen Stand des Projekts als neue Version festhalten</translation>
    </message>
    <message>
        <source>&amp;Versions…</source>
        <translation>&amp;Versionen…</translation>
    </message>
    <message>
        <source>Show the versions of the project</source>
        <translation>Die Versionen des Projekts anzeigen</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>A&amp;nsicht</translation>
    </message>
    <message>
        <source>Go to the &amp;model</source>
        <translation>Zum &amp;Modell</translation>
    </message>
    <message>
        <source>Go to the dia&amp;gram</source>
        <translation>Zum &amp;Diagramm</translation>
    </message>
    <message>
        <source>Go to the scri&amp;pts</source>
        <translation>Zu den S&amp;kripten</translation>
    </message>
    <message>
        <source>Go to the m&amp;essages</source>
        <translation>Zu den M&amp;eldungen</translation>
    </message>
    <message>
        <source>Fi&amp;lter the model</source>
        <translation>Modell &amp;filtern</translation>
    </message>
    <message>
        <source>Find in the scrip&amp;t</source>
        <translation>&amp;Im Skript suchen</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>&amp;Manual</source>
        <translation>&amp;Handbuch</translation>
    </message>
    <message>
        <source>Open the manual</source>
        <translation>Das Handbuch öffnen</translation>
    </message>
    <message>
        <source>&amp;About Korvane</source>
        <translation>Ü&amp;ber Korvane</translation>
    </message>
    <message>
        <source>Versions of the program and of its plugins</source>
        <translation>Versionen des Programms und seiner Plugins</translation>
    </message>
    <message>
        <source>Tools</source>
        <translation>Werkzeugleiste</translation>
    </message>
    <message>
        <source>Go to the &amp;changes</source>
        <translation>Zu den &amp;Änderungen</translation>
    </message>
    <message>
        <source>&amp;New project…</source>
        <translation>&amp;Neues Projekt…</translation>
    </message>
    <message>
        <source>Make a project of a small model, which is written as text beside it</source>
        <translation>Ein Projekt aus einem kleinen Modell anlegen, das daneben als Text geschrieben wird</translation>
    </message>
    <message>
        <source>Import from &amp;database…</source>
        <translation>Aus &amp;Datenbank importieren…</translation>
    </message>
    <message>
        <source>Make the model that of a database: a SQLite file, a server, or a script</source>
        <translation>Das Modell zu dem einer Datenbank machen: einer SQLite-Datei, eines Servers oder eines Skripts</translation>
    </message>
</context>
<context>
    <name>app::window_panes</name>
    <message>
        <source>Diagram</source>
        <translation>Diagramm</translation>
    </message>
    <message>
        <source>Scripts</source>
        <translation>Skripte</translation>
    </message>
    <message>
        <source>Model</source>
        <translation>Modell</translation>
    </message>
    <message>
        <source>Messages</source>
        <translation>Meldungen</translation>
    </message>
    <message>
        <source>Diagram, changes and scripts</source>
        <translation>Diagramm, Änderungen und Skripte</translation>
    </message>
    <message>
        <source>Changes</source>
        <translation>Änderungen</translation>
    </message>
</context>
<context>
    <name>model</name>
    <message>
        <source>the version tagged at %1 is not there any more</source>
        <translation>die um %1 festgehaltene Version ist nicht mehr vorhanden</translation>
    </message>
</context>
<context>
    <name>os</name>
    <message>
        <source>a file</source>
        <translation>eine Datei</translation>
    </message>
    <message>
        <source>a folder</source>
        <translation>ein Ordner</translation>
    </message>
    <message>
        <source>a symbolic link</source>
        <translation>ein symbolischer Link</translation>
    </message>
    <message>
        <source>a named pipe</source>
        <translation>eine benannte Pipe</translation>
    </message>
    <message>
        <source>a socket</source>
        <translation>ein Socket</translation>
    </message>
    <message>
        <source>a device</source>
        <translation>ein Gerät</translation>
    </message>
    <message>
        <source>Out of memory; the command was not completed. Close other programs or raise the limit of memory (ulimit -v), and try again</source>
        <translation>Der Speicher reicht nicht aus; der Befehl wurde nicht zu Ende geführt. Schließen Sie andere Programme oder heben Sie die Speichergrenze an (ulimit -v), und versuchen Sie es erneut</translation>
    </message>
</context>
<context>
    <name>plugin</name>
    <message>
        <source>the plugin file does not exist</source>
        <translation>die Plugin-Datei existiert nicht</translation>
    </message>
    <message>
        <source>is not a plugin: it is not a file</source>
        <translation>ist kein Plugin: Es ist keine Datei</translation>
    </message>
    <message>
        <source>is not a plugin: it is empty</source>
        <translation>ist kein Plugin: Die Datei ist leer</translation>
    </message>
    <message>
        <source>is not a plugin: %1</source>
        <translation>ist kein Plugin: %1</translation>
    </message>
    <message>
        <source>the plugin cannot be loaded: %1</source>
        <translation>das Plugin kann nicht geladen werden: %1</translation>
    </message>
    <message>
        <source>the plugin was built for another interface</source>
        <translation>das Plugin wurde für eine andere Schnittstelle gebaut</translation>
    </message>
    <message>
        <source>the plugin was built for version %1 of the plugin interface, and this program has version %2; take the plugin that belongs to this program, or build it anew</source>
        <translation>das Plugin wurde für Version %1 der Plugin-Schnittstelle gebaut, dieses Programm hat Version %2; nehmen Sie das Plugin, das zu diesem Programm gehört, oder bauen Sie es neu</translation>
    </message>
</context>
<context>
    <name>plugin::ddl_export</name>
    <message>
        <source>Export to DDL SQL script file</source>
        <translation>In eine DDL-SQL-Skriptdatei exportieren</translation>
    </message>
    <message>
        <source>This plugin exports current opened project to a DDL SQL script file.</source>
        <translation>Dieses Plugin exportiert das geöffnete Projekt in eine DDL-SQL-Skriptdatei.</translation>
    </message>
    <message>
        <source>
  !!! Note : this plugin loads automatically previous parameters values before starting the export process, but you can use following parameters to override them !!!</source>
        <translation>
  !!! Hinweis: Dieses Plugin lädt vor dem Export automatisch die zuletzt gespeicherten Parameterwerte; mit den folgenden Parametern können sie überschrieben werden !!!</translation>
    </message>
    <message>
        <source>
  --KorvGenericDDLExport_path=&quot;&lt;Export Path&gt;&quot; : [Optional] DDL export path parameter</source>
        <translation>
  --KorvGenericDDLExport_path=&quot;&lt;Exportpfad&gt;&quot; : [Optional] Pfad für den DDL-Export</translation>
    </message>
    <message>
        <source>
  --KorvGenericDDLExport_db_type=&lt;numeric value&gt; : [Optional] Database type (%1)</source>
        <translation>
  --KorvGenericDDLExport_db_type=&lt;Zahl&gt; : [Optional] Datenbanktyp (%1)</translation>
    </message>
    <message>
        <source>
  --KorvGenericDDLExport_relation_as_fk=0/1 : [Optional] Export relationships as foreign keys in database</source>
        <translation>
  --KorvGenericDDLExport_relation_as_fk=0/1 : [Optional] Beziehungen als Fremdschlüssel der Datenbank exportieren</translation>
    </message>
    <message>
        <source>
  --KorvGenericDDLExport_schema_type=&lt;numeric value&gt; : [Optional] Way to export database schema (0=full, 1=evolution, 2=full_and_evolution)</source>
        <translation>
  --KorvGenericDDLExport_schema_type=&lt;Zahl&gt; : [Optional] Art, das Datenbankschema zu exportieren (0=full, 1=evolution, 2=full_and_evolution)</translation>
    </message>
    <message>
        <source>
  --KorvGenericDDLExport_custom_javacript=&quot;&lt;Custom JS&gt;&quot; : [Optional] Custom script (javascript file) to change the default behaviour of the export process</source>
        <translation>
  --KorvGenericDDLExport_custom_javacript=&quot;&lt;Eigenes JS&gt;&quot; : [Optional] Eigenes Skript (JavaScript-Datei), das das Standardverhalten des Exports ändert</translation>
    </message>
    <message>
        <source>Error loading plugin settings : </source>
        <translation>Fehler beim Laden der Plugin-Einstellungen: </translation>
    </message>
    <message>
        <source>Cannot export project to DDL file : project name is empty</source>
        <translation>Das Projekt kann nicht in eine DDL-Datei exportiert werden: Der Projektname ist leer</translation>
    </message>
    <message>
        <source>Cannot create a builder to generate DDL SQL script</source>
        <translation>Es kann kein Generator für das DDL-SQL-Skript erzeugt werden</translation>
    </message>
    <message>
        <source>Export directory &apos;%1&apos; doesn&apos;t exist.
Do you want to create it and start the export process ?</source>
        <translation>Das Exportverzeichnis ‚%1‘ existiert nicht.
Soll es angelegt und der Export gestartet werden?</translation>
    </message>
    <message>
        <source>Export path to create DDL SQL script doesn&apos;t exist : &apos;%1&apos;</source>
        <translation>Der Exportpfad für das DDL-SQL-Skript existiert nicht: ‚%1‘</translation>
    </message>
    <message>
        <source>Export directory &apos;%1&apos; cannot be created (%2)</source>
        <translation>Das Exportverzeichnis ‚%1‘ kann nicht angelegt werden (%2)</translation>
    </message>
    <message>
        <source>Nothing was written: evolution scripts need a tagged version</source>
        <translation>Es wurde nichts geschrieben: Für Evolutionsskripte muss erst eine Version festgehalten werden</translation>
    </message>
    <message>
        <source>Nothing was written: the setting for the schema has no such value</source>
        <translation>Es wurde nichts geschrieben: Die Einstellung für das Schema kennt diesen Wert nicht</translation>
    </message>
    <message>
        <source>no value, so the stored setting counts</source>
        <translation>keinen Wert, daher gilt die gespeicherte Einstellung</translation>
    </message>
    <message>
        <source>none of them, so nothing is written</source>
        <translation>keinen davon, daher wird nichts geschrieben</translation>
    </message>
    <message>
        <source>Folder of the scripts</source>
        <translation>Ordner der Skripte</translation>
    </message>
    <message>
        <source>Database that the scripts are for</source>
        <translation>Datenbank, für die die Skripte sind</translation>
    </message>
    <message>
        <source>Whether relationships become foreign keys</source>
        <translation>Ob aus Beziehungen Fremdschlüssel werden</translation>
    </message>
    <message>
        <source>Which scripts are written</source>
        <translation>Welche Skripte geschrieben werden</translation>
    </message>
    <message>
        <source>JavaScript file that may change each statement</source>
        <translation>JavaScript-Datei, die jede Anweisung ändern darf</translation>
    </message>
    <message>
        <source>The export has no option &apos;%1&apos;: it has %2</source>
        <translation>Der Export hat keine Option ‚%1‘: Er hat %2</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not a value of the option &apos;%2&apos;: it takes %3</source>
        <translation>‚%1‘ ist kein Wert der Option ‚%2‘: Sie nimmt %3</translation>
    </message>
    <message>
        <source>The settings cannot be stored: the project has no file</source>
        <translation>Die Einstellungen können nicht gespeichert werden: Das Projekt hat keine Datei</translation>
    </message>
    <message>
        <source>The settings cannot be stored: %1</source>
        <translation>Die Einstellungen können nicht gespeichert werden: %1</translation>
    </message>
    <message>
        <source>The statements are not known: the custom script &apos;%1&apos; was not allowed to run</source>
        <translation>Die Anweisungen sind nicht bekannt: Das eigene Skript ‚%1‘ durfte nicht laufen</translation>
    </message>
    <message>
        <source>The export was cancelled; no script is complete</source>
        <translation>Der Export wurde abgebrochen; kein Skript ist vollständig</translation>
    </message>
</context>
<context>
    <name>plugin::ddl_export_builder</name>
    <message>
        <source>Directory to create DDL SQL script doesn&apos;t exist : %1</source>
        <translation>Das Verzeichnis für das DDL-SQL-Skript existiert nicht: %1</translation>
    </message>
    <message>
        <source>There is no plugin associated to the DDL builder class</source>
        <translation>Der DDL-Generatorklasse ist kein Plugin zugeordnet</translation>
    </message>
    <message>
        <source>%1 : DDL export begin (%2)</source>
        <translation>%1: Beginn des DDL-Exports (%2)</translation>
    </message>
    <message>
        <source>%1 : DDL export end (%2)</source>
        <translation>%1: Ende des DDL-Exports (%2)</translation>
    </message>
    <message>
        <source>%1 DDL SQL script created for project &apos;%2&apos; : &apos;%3&apos;</source>
        <translation>%1: DDL-SQL-Skript für das Projekt ‚%2‘ erzeugt: ‚%3‘</translation>
    </message>
    <message>
        <source>%1 : create table DDL SQL script for entity &apos;%2&apos; (%3)</source>
        <translation>%1: DDL-SQL-Skript zum Anlegen der Tabelle der Entität ‚%2‘ (%3)</translation>
    </message>
    <message>
        <source>%1 : create index DDL SQL script for property &apos;%2&apos; (%3)</source>
        <translation>%1: DDL-SQL-Skript zum Anlegen des Index der Eigenschaft ‚%2‘ (%3)</translation>
    </message>
    <message>
        <source>%1 : create extra-table DDL SQL script for relationship n-n &apos;%2&apos; (%3)</source>
        <translation>%1: DDL-SQL-Skript zum Anlegen der Verknüpfungstabelle der n:m-Beziehung ‚%2‘ (%3)</translation>
    </message>
    <message>
        <source>%1 : add foreign key DDL SQL script for entity &apos;%2&apos; : property &apos;%3&apos;, target entity &apos;%4&apos; (%5)</source>
        <translation>%1: DDL-SQL-Skript zum Hinzufügen des Fremdschlüssels der Entität ‚%2‘: Eigenschaft ‚%3‘, Zielentität ‚%4‘ (%5)</translation>
    </message>
    <message>
        <source>Invalid previous project</source>
        <translation>Ungültiges vorheriges Projekt</translation>
    </message>
    <message>
        <source>Invalid current project</source>
        <translation>Ungültiges aktuelles Projekt</translation>
    </message>
    <message>
        <source>Previous project doesn&apos;t have a valid list of entities</source>
        <translation>Das vorherige Projekt hat keine gültige Liste von Entitäten</translation>
    </message>
    <message>
        <source>Current project doesn&apos;t have a valid list of entities</source>
        <translation>Das aktuelle Projekt hat keine gültige Liste von Entitäten</translation>
    </message>
    <message>
        <source>Database schema evolution</source>
        <translation>Evolution des Datenbankschemas</translation>
    </message>
    <message>
        <source>%1 : drop table DDL SQL script for entity &apos;%2&apos; (%3)</source>
        <translation>%1: DDL-SQL-Skript zum Löschen der Tabelle der Entität ‚%2‘ (%3)</translation>
    </message>
    <message>
        <source>%1 : rename table DDL SQL script for entity &apos;%2&apos; (%3)</source>
        <translation>%1: DDL-SQL-Skript zum Umbenennen der Tabelle der Entität ‚%2‘ (%3)</translation>
    </message>
    <message>
        <source>%1 : drop column DDL SQL script for property &apos;%2&apos; (%3)</source>
        <translation>%1: DDL-SQL-Skript zum Löschen der Spalte der Eigenschaft ‚%2‘ (%3)</translation>
    </message>
    <message>
        <source>%1 : drop index DDL SQL script for property &apos;%2&apos; (%3)</source>
        <translation>%1: DDL-SQL-Skript zum Löschen des Index der Eigenschaft ‚%2‘ (%3)</translation>
    </message>
    <message>
        <source>%1 : add column DDL SQL script for property &apos;%2&apos; (%3)</source>
        <translation>%1: DDL-SQL-Skript zum Hinzufügen der Spalte der Eigenschaft ‚%2‘ (%3)</translation>
    </message>
    <message>
        <source>%1 : rename column DDL SQL script for property &apos;%2&apos; (%3)</source>
        <translation>%1: DDL-SQL-Skript zum Umbenennen der Spalte der Eigenschaft ‚%2‘ (%3)</translation>
    </message>
    <message>
        <source>%1 : drop foreign key DDL SQL script for relationship &apos;%2&apos; (%3)</source>
        <translation>%1: DDL-SQL-Skript zum Löschen des Fremdschlüssels der Beziehung ‚%2‘ (%3)</translation>
    </message>
    <message>
        <source>Error loading all project historics :
%1</source>
        <translation>Fehler beim Laden der Projekthistorie:
%1</translation>
    </message>
    <message>
        <source>Cannot get temp directory to extract tag project state</source>
        <translation>Für das Entpacken des festgehaltenen Projektstands ist kein temporäres Verzeichnis verfügbar</translation>
    </message>
    <message>
        <source>This project doesn&apos;t have a valid list of entities</source>
        <translation>Dieses Projekt hat keine gültige Liste von Entitäten</translation>
    </message>
    <message>
        <source>Full database schema</source>
        <translation>Vollständiges Datenbankschema</translation>
    </message>
    <message>
        <source>An error occurred opening SQL file : %1</source>
        <translation>Beim Öffnen der SQL-Datei ist ein Fehler aufgetreten: %1</translation>
    </message>
    <message>
        <source>An error occurred writing SQL file : %1</source>
        <translation>Beim Schreiben der SQL-Datei ist ein Fehler aufgetreten: %1</translation>
    </message>
    <message>
        <source>it is a symbolic link that leads nowhere; remove it</source>
        <translation>ist ein symbolischer Link, der ins Leere führt; entfernen Sie ihn</translation>
    </message>
    <message>
        <source>it is a symbolic link that leads out of the export folder, to %1; remove it</source>
        <translation>ist ein symbolischer Link, der aus dem Exportverzeichnis hinausführt, nach %1; entfernen Sie ihn</translation>
    </message>
    <message>
        <source>it exists, but is not a file</source>
        <translation>unter diesem Namen gibt es etwas, das keine Datei ist</translation>
    </message>
    <message>
        <source>The SQL file is incomplete : %1</source>
        <translation>Die SQL-Datei ist unvollständig: %1</translation>
    </message>
    <message>
        <source>Cannot uncompress project file : %1</source>
        <translation>Die Projektdatei kann nicht entpackt werden: %1</translation>
    </message>
    <message>
        <source>An error occurred opening project file : %1</source>
        <translation>Beim Öffnen der Projektdatei ist ein Fehler aufgetreten: %1</translation>
    </message>
    <message>
        <source>An error occurred loading project tag &apos;%1&apos; :
%2</source>
        <translation>Beim Laden des festgehaltenen Projektstands ‚%1‘ ist ein Fehler aufgetreten:
%2</translation>
    </message>
    <message>
        <source>The export was cancelled</source>
        <translation>Der Export wurde abgebrochen</translation>
    </message>
</context>
<context>
    <name>storage</name>
    <message>
        <source>cannot be tagged: its state of %1 bytes is larger than the %2 bytes that a version may have</source>
        <translation>kann nicht festgehalten werden: Der Stand ist mit %1 Bytes größer als die %2 Bytes, die eine Version haben darf</translation>
    </message>
    <message>
        <source>is damaged (the time of a version is not a time, and a new version would come before it); restore it from a copy</source>
        <translation>ist beschädigt (der Zeitpunkt einer Version ist keine Zeitangabe, und eine neue Version käme vor ihr); stellen Sie die Datei aus einer Kopie wieder her</translation>
    </message>
    <message>
        <source>cannot be tagged: there is not enough memory</source>
        <translation>kann nicht festgehalten werden: Der Speicher reicht nicht aus</translation>
    </message>
    <message>
        <source>field &apos;name&apos; must not be empty</source>
        <translation>Feld ‚name‘ darf nicht leer sein</translation>
    </message>
    <message>
        <source>project name</source>
        <translation>der Projektname</translation>
    </message>
    <message>
        <source>only one property of an entity can be the identifier; for a composite key give that one several columns, such as &quot;columnName&quot;: &quot;a|b&quot;</source>
        <translation>nur eine Eigenschaft einer Entität kann der Identifikator sein; für einen zusammengesetzten Schlüssel geben Sie dieser mehrere Spalten, zum Beispiel &quot;columnName&quot;: &quot;a|b&quot;</translation>
    </message>
    <message>
        <source>field &apos;autoIncrement&apos; works only with integer types such as &quot;long&quot;</source>
        <translation>Feld ‚autoIncrement‘ ist nur bei ganzzahligen Typen wie &quot;long&quot; möglich</translation>
    </message>
    <message>
        <source>relationship target %1 does not exist</source>
        <translation>das Beziehungsziel %1 existiert nicht</translation>
    </message>
    <message>
        <source>relationship inverse %1 does not exist in the target %2</source>
        <translation>das Inverse %1 der Beziehung existiert im Ziel %2 nicht</translation>
    </message>
    <message>
        <source>identifiers refer to each other in a circle: %1; give one of them a plain type</source>
        <translation>die Identifikatoren verweisen im Kreis aufeinander: %1; geben Sie einem davon einen einfachen Typ</translation>
    </message>
    <message>
        <source>must not be empty</source>
        <translation>darf nicht leer sein</translation>
    </message>
    <message>
        <source>is longer than %1 bytes</source>
        <translation>ist länger als %1 Bytes</translation>
    </message>
    <message>
        <source>%1 must not begin with &apos;:&apos; or &apos;.&apos;</source>
        <translation>%1 darf nicht mit ‚:‘ oder ‚.‘ beginnen</translation>
    </message>
    <message>
        <source>%1 must not contain &apos;/&apos;, &apos;\&apos; or control characters</source>
        <translation>%1 darf weder ‚/‘ noch ‚\‘ noch Steuerzeichen enthalten</translation>
    </message>
    <message>
        <source>%1 must not contain characters that turn the direction of text or separate lines</source>
        <translation>%1 darf keine Zeichen enthalten, die die Schreibrichtung ändern oder Zeilen trennen</translation>
    </message>
    <message>
        <source>%1 is a reserved device name of Windows</source>
        <translation>%1 ist ein reservierter Gerätename von Windows</translation>
    </message>
    <message>
        <source>enumeration id %1 is used twice</source>
        <translation>die Id %1 wird für zwei Aufzählungen verwendet</translation>
    </message>
    <message>
        <source>entity id %1 is used twice</source>
        <translation>die Id %1 wird für zwei Entitäten verwendet</translation>
    </message>
    <message>
        <source>property id %1 is used twice</source>
        <translation>die Id %1 wird für zwei Eigenschaften verwendet</translation>
    </message>
    <message>
        <source>relationship id %1 is used twice</source>
        <translation>die Id %1 wird für zwei Beziehungen verwendet</translation>
    </message>
    <message>
        <source>type id %1 is used twice</source>
        <translation>die Id %1 wird für zwei Typen verwendet</translation>
    </message>
    <message>
        <source>a many-to-many needs relationship field %1, or the scripts make no usable link table or foreign key</source>
        <translation>eine n:m-Beziehung braucht das Beziehungsfeld %1, sonst legen die Skripte keine brauchbare Verknüpfungstabelle oder keinen brauchbaren Fremdschlüssel an</translation>
    </message>
    <message>
        <source>&apos;type&apos; lists %1 types, but &apos;columnName&apos; gives the number of columns as %2; they must be as many</source>
        <translation>‚type‘ zählt %1 Typen auf, ‚columnName‘ aber ergibt die Spaltenzahl %2; beide müssen übereinstimmen</translation>
    </message>
    <message>
        <source>the foreign key needs a column %1, which no property makes; name an existing one in &apos;columnName&apos;</source>
        <translation>der Fremdschlüssel braucht eine Spalte %1, die keine Eigenschaft anlegt; nennen Sie in ‚columnName‘ eine vorhandene</translation>
    </message>
    <message>
        <source>its table %1 is the table of %2 as well; give one of them another &apos;tableName&apos;</source>
        <translation>die Tabelle %1 ist auch die Tabelle von %2; geben Sie einer der beiden Entitäten einen anderen ‚tableName‘</translation>
    </message>
    <message>
        <source>%1 has the same name; give one of them another, since an entity without &apos;id&apos; is known by its name</source>
        <translation>%1 hat denselben Namen; geben Sie einer der beiden einen anderen, denn eine Entität ohne ‚id‘ wird an ihrem Namen erkannt</translation>
    </message>
    <message>
        <source>cannot be created (%1); check its folder</source>
        <translation>kann nicht angelegt werden (%1); prüfen Sie den Ordner</translation>
    </message>
    <message>
        <source>no temporary file can be made there (%1)</source>
        <translation>dort kann keine temporäre Datei angelegt werden (%1)</translation>
    </message>
    <message>
        <source>cannot be read back (%1)</source>
        <translation>kann nach dem Schreiben nicht gelesen werden (%1)</translation>
    </message>
    <message>
        <source>column %1 is not a number of the expected range</source>
        <translation>Spalte %1 ist keine Zahl im erwarteten Bereich</translation>
    </message>
    <message>
        <source>column %1 is not a text</source>
        <translation>Spalte %1 ist kein Text</translation>
    </message>
    <message>
        <source>is damaged (table %1, row %2: %3); restore it from a copy</source>
        <translation>ist beschädigt (Tabelle %1, Zeile %2: %3); stellen Sie die Datei aus einer Kopie wieder her</translation>
    </message>
    <message>
        <source>is damaged (details of a property that does not exist); restore it from a copy</source>
        <translation>ist beschädigt (Einzelheiten einer Eigenschaft, die nicht existiert); stellen Sie die Datei aus einer Kopie wieder her</translation>
    </message>
    <message>
        <source>is damaged (table t_project has %1 rows); restore it from a copy</source>
        <translation>ist beschädigt (Zeilenzahl der Tabelle t_project: %1); stellen Sie die Datei aus einer Kopie wieder her</translation>
    </message>
    <message>
        <source>enumeration %1 does not exist</source>
        <translation>die Aufzählung %1 existiert nicht</translation>
    </message>
    <message>
        <source>the value is not of its type</source>
        <translation>der Wert entspricht nicht seinem Typ</translation>
    </message>
    <message>
        <source>the entity does not exist</source>
        <translation>die Entität existiert nicht</translation>
    </message>
    <message>
        <source>the key is used twice</source>
        <translation>der Schlüssel wird zweimal verwendet</translation>
    </message>
    <message>
        <source>the type is neither a C++ type nor an enumeration</source>
        <translation>der Typ ist weder ein C++-Typ noch eine Aufzählung</translation>
    </message>
    <message>
        <source>the property has a second relationship</source>
        <translation>die Eigenschaft hat eine zweite Beziehung</translation>
    </message>
    <message>
        <source>entity %1 does not exist</source>
        <translation>die Entität %1 existiert nicht</translation>
    </message>
    <message>
        <source>type %1 does not exist or is one too many</source>
        <translation>der Typ %1 existiert nicht oder ist überzählig</translation>
    </message>
    <message>
        <source>the details of the property are missing</source>
        <translation>die Einzelheiten der Eigenschaft fehlen</translation>
    </message>
    <message>
        <source>is a SQLite database, but not a Korvane project</source>
        <translation>ist eine SQLite-Datenbank, aber kein Korvane-Projekt</translation>
    </message>
    <message>
        <source>was written by a newer korvane (format %1; this one reads up to %2); update korvane</source>
        <translation>wurde von einem neueren korvane geschrieben (Format %1; dieses liest bis %2); aktualisieren Sie korvane</translation>
    </message>
    <message>
        <source>is damaged (format %1); restore it from a copy</source>
        <translation>ist beschädigt (Format %1); stellen Sie die Datei aus einer Kopie wieder her</translation>
    </message>
    <message>
        <source>is damaged (table %1 is not as it was created); restore it from a copy</source>
        <translation>ist beschädigt (Tabelle %1 ist nicht, wie sie angelegt wurde); stellen Sie die Datei aus einer Kopie wieder her</translation>
    </message>
    <message>
        <source>is damaged (table %1 is missing); restore it from a copy</source>
        <translation>ist beschädigt (Tabelle %1 fehlt); stellen Sie die Datei aus einer Kopie wieder her</translation>
    </message>
    <message>
        <source>is damaged (table %1: %2); restore it from a copy</source>
        <translation>ist beschädigt (Tabelle %1: %2); stellen Sie die Datei aus einer Kopie wieder her</translation>
    </message>
    <message>
        <source>the project must be an object</source>
        <translation>das Projekt muss ein Objekt sein</translation>
    </message>
    <message>
        <source>relationship must be an object</source>
        <translation>die Beziehung muss ein Objekt sein</translation>
    </message>
    <message>
        <source>must be an object</source>
        <translation>muss ein Objekt sein</translation>
    </message>
    <message>
        <source>relationship field &apos;%1&apos;</source>
        <translation>Beziehungsfeld ‚%1‘</translation>
    </message>
    <message>
        <source>field &apos;%1&apos;</source>
        <translation>Feld ‚%1‘</translation>
    </message>
    <message>
        <source>%1 is missing</source>
        <translation>%1 fehlt</translation>
    </message>
    <message>
        <source>%1 must be a string</source>
        <translation>%1 muss eine Zeichenkette sein</translation>
    </message>
    <message>
        <source>%1 must not be empty</source>
        <translation>%1 darf nicht leer sein</translation>
    </message>
    <message>
        <source>%1 must be an integer from %2 to %3</source>
        <translation>%1 muss eine ganze Zahl von %2 bis %3 sein</translation>
    </message>
    <message>
        <source>%1 must be true or false</source>
        <translation>%1 muss true oder false sein</translation>
    </message>
    <message>
        <source>%1 must be an array</source>
        <translation>%1 muss ein Array sein</translation>
    </message>
    <message>
        <source>unknown relationship field &apos;%1&apos;</source>
        <translation>unbekanntes Beziehungsfeld ‚%1‘</translation>
    </message>
    <message>
        <source>unknown field &apos;%1&apos;</source>
        <translation>unbekanntes Feld ‚%1‘</translation>
    </message>
    <message>
        <source>%1 must be &quot;korvane-project&quot;</source>
        <translation>%1 muss &quot;korvane-project&quot; sein</translation>
    </message>
    <message>
        <source>field &apos;formatVersion&apos;: the text was written for a newer korvane (format %1; this one reads %2); update korvane</source>
        <translation>Feld ‚formatVersion‘: Der Text wurde für ein neueres korvane geschrieben (Format %1; dieses liest %2); aktualisieren Sie korvane</translation>
    </message>
    <message>
        <source>%1 must be %2</source>
        <translation>%1 muss %2 sein</translation>
    </message>
    <message>
        <source>%1 must be an object</source>
        <translation>%1 muss ein Objekt sein</translation>
    </message>
    <message>
        <source>field &apos;metaData&apos; &apos;%1&apos; must be a string, a number or a boolean</source>
        <translation>Feld ‚metaData‘: ‚%1‘ muss eine Zeichenkette, eine Zahl oder ein Wahrheitswert sein</translation>
    </message>
    <message>
        <source>fields &apos;type&apos; and &apos;enumeration&apos; exclude each other</source>
        <translation>die Felder ‚type‘ und ‚enumeration‘ schließen einander aus</translation>
    </message>
    <message>
        <source>field &apos;relationship&apos; excludes &apos;type&apos; and &apos;enumeration&apos;</source>
        <translation>Feld ‚relationship‘ schließt ‚type‘ und ‚enumeration‘ aus</translation>
    </message>
    <message>
        <source>%1 must be one-to-one, one-to-many, many-to-one or many-to-many</source>
        <translation>%1 muss one-to-one, one-to-many, many-to-one oder many-to-many sein</translation>
    </message>
    <message>
        <source>the version cannot be raised any further</source>
        <translation>die Version kann nicht weiter erhöht werden</translation>
    </message>
    <message>
        <source>%1: changed, but its &quot;version&quot; is still %2, so no evolution script will contain the change; delete the &quot;version&quot; field or raise it</source>
        <translation>%1: geändert, aber &quot;version&quot; ist noch %2, daher wird kein Evolutionsskript die Änderung enthalten; löschen Sie das Feld &quot;version&quot; oder erhöhen Sie es</translation>
    </message>
    <message>
        <source>all enumeration ids are used up</source>
        <translation>alle Ids für Aufzählungen sind vergeben</translation>
    </message>
    <message>
        <source>all entity ids are used up</source>
        <translation>alle Ids für Entitäten sind vergeben</translation>
    </message>
    <message>
        <source>all property ids are used up</source>
        <translation>alle Ids für Eigenschaften sind vergeben</translation>
    </message>
    <message>
        <source>all relationship ids are used up</source>
        <translation>alle Ids für Beziehungen sind vergeben</translation>
    </message>
    <message>
        <source>%1</source>
        <comment>the words of the JSON parser</comment>
        <translation>kein gültiges JSON (%1)</translation>
    </message>
    <message>
        <source>is a project file, not a model in text form; &apos;korvane dump&apos; writes one</source>
        <translation>ist eine Projektdatei, kein Modell in Textform; ‚korvane dump‘ schreibt eines</translation>
    </message>
    <message>
        <source>the text is in %1; save it in UTF-8</source>
        <translation>der Text ist in %1; speichern Sie ihn in UTF-8</translation>
    </message>
    <message>
        <source>field &apos;%1&apos; is given twice</source>
        <translation>Feld ‚%1‘ ist zweimal angegeben</translation>
    </message>
    <message>
        <source>is nested deeper than %1 levels</source>
        <translation>ist tiefer als %1 Ebenen verschachtelt</translation>
    </message>
    <message>
        <source>contains a NUL byte, which JSON does not allow</source>
        <translation>enthält ein NUL-Byte, was JSON nicht erlaubt</translation>
    </message>
    <message>
        <source>line %1, column %2</source>
        <translation>Zeile %1, Spalte %2</translation>
    </message>
    <message>
        <source>has no versions; &apos;korvane tag&apos; makes one</source>
        <translation>hat keine Versionen; ‚korvane tag‘ legt eine an</translation>
    </message>
    <message>
        <source>has no version %1; the newest one is version %2</source>
        <translation>hat keine Version %1; die neueste ist Version %2</translation>
    </message>
    <message>
        <source>is damaged (version %1: %2); restore it from a copy</source>
        <translation>ist beschädigt (Version %1: %2); stellen Sie die Datei aus einer Kopie wieder her</translation>
    </message>
    <message>
        <source>it cannot be uncompressed</source>
        <translation>sie kann nicht entpackt werden</translation>
    </message>
    <message>
        <source>cannot be written, so version %1 of %2 cannot be restored; check the folder for temporary files</source>
        <translation>kann nicht geschrieben werden, daher kann Version %1 von %2 nicht wiederhergestellt werden; prüfen Sie den Ordner für temporäre Dateien</translation>
    </message>
    <message>
        <source>version %1 is not the newest one any more; nothing was taken away</source>
        <translation>Version %1 ist nicht mehr die neueste; nichts wurde weggenommen</translation>
    </message>
    <message>
        <source>&apos;%1&apos;</source>
        <translation>‚%1‘</translation>
    </message>
</context>
<context>
    <name>tools</name>
    <message>
        <source>the custom script did not end within %1 ms and could not be stopped; the program was ended</source>
        <translation>das eigene Skript endete nicht innerhalb von %1 ms und ließ sich nicht anhalten; das Programm wurde beendet</translation>
    </message>
    <message>
        <source>the custom script used more than 1 GiB of memory and could not be stopped; the program was ended</source>
        <translation>das eigene Skript belegte mehr als 1 GiB Speicher und ließ sich nicht anhalten; das Programm wurde beendet</translation>
    </message>
    <message>
        <source>The custom script cannot be reloaded while it is running</source>
        <translation>Das eigene Skript kann nicht neu geladen werden, während es läuft</translation>
    </message>
    <message>
        <source>No custom script file is given</source>
        <translation>Es ist keine Datei eines eigenen Skripts angegeben</translation>
    </message>
    <message>
        <source>the custom script cannot be read: %1</source>
        <translation>das eigene Skript kann nicht gelesen werden: %1</translation>
    </message>
    <message>
        <source>the custom script defines no function exportStep(project, entity, property, enumeration, parameters)</source>
        <translation>das eigene Skript definiert keine Funktion exportStep(project, entity, property, enumeration, parameters)</translation>
    </message>
    <message>
        <source>loading the custom script did not end within %1 ms</source>
        <translation>das Laden des eigenen Skripts endete nicht innerhalb von %1 ms</translation>
    </message>
    <message>
        <source>loading the custom script used more than 1 GiB of memory</source>
        <translation>das Laden des eigenen Skripts belegte mehr als 1 GiB Speicher</translation>
    </message>
    <message>
        <source>The custom script is running already</source>
        <translation>Das eigene Skript läuft bereits</translation>
    </message>
    <message>
        <source>exportStep did not end within %1 ms</source>
        <translation>exportStep endete nicht innerhalb von %1 ms</translation>
    </message>
    <message>
        <source>exportStep used more than 1 GiB of memory</source>
        <translation>exportStep belegte mehr als 1 GiB Speicher</translation>
    </message>
    <message>
        <source>exportStep returned %1 for the action %2; expected a string, undefined or null</source>
        <translation>exportStep hat für die Aktion %2 %1 zurückgegeben; erwartet wird eine Zeichenkette, undefined oder null</translation>
    </message>
    <message>
        <source>The script debugger cannot be attached to a running script</source>
        <translation>Der Skript-Debugger kann nicht mit einem laufenden Skript verbunden werden</translation>
    </message>
    <message>
        <source>The script debugger needs a display, and the program has none</source>
        <translation>Der Skript-Debugger braucht eine grafische Anzeige, und das Programm hat keine</translation>
    </message>
    <message>
        <source>it did not end within %1 ms</source>
        <translation>die Auswertung endete nicht innerhalb von %1 ms</translation>
    </message>
    <message>
        <source>it used more than 1 GiB of memory</source>
        <translation>die Auswertung belegte mehr als 1 GiB Speicher</translation>
    </message>
    <message>
        <source>the file does not exist</source>
        <translation>die Datei existiert nicht</translation>
    </message>
    <message>
        <source>it is a folder, not a file</source>
        <translation>es ist ein Ordner, keine Datei</translation>
    </message>
    <message>
        <source>it is not a regular file</source>
        <translation>es ist keine gewöhnliche Datei</translation>
    </message>
    <message>
        <source>it is larger than %1 MiB</source>
        <translation>es ist größer als %1 MiB</translation>
    </message>
    <message>
        <source>it is not UTF-8 text</source>
        <translation>es ist kein UTF-8-Text</translation>
    </message>
    <message>
        <source>%1: &apos;%2&apos; is not a time limit; give a number of milliseconds from 1 to %3, or 0 for none</source>
        <translation>%1: ‚%2‘ ist keine Zeitgrenze; geben Sie eine Zahl von Millisekunden von 1 bis %3 an, oder 0 für keine</translation>
    </message>
    <message>
        <source>exportStep returned %1 characters for the action %2; at most %3 are allowed</source>
        <translation>exportStep hat für die Aktion %2 %1 Zeichen zurückgegeben; höchstens %3 sind erlaubt</translation>
    </message>
    <message>
        <source>a boolean</source>
        <comment>exportStep returned …</comment>
        <translation>einen Wahrheitswert</translation>
    </message>
    <message>
        <source>a number</source>
        <comment>exportStep returned …</comment>
        <translation>eine Zahl</translation>
    </message>
    <message>
        <source>a function</source>
        <comment>exportStep returned …</comment>
        <translation>eine Funktion</translation>
    </message>
    <message>
        <source>an array</source>
        <comment>exportStep returned …</comment>
        <translation>ein Array</translation>
    </message>
    <message>
        <source>an object</source>
        <comment>exportStep returned …</comment>
        <translation>ein Objekt</translation>
    </message>
    <message>
        <source>%1 cannot be loaded (%2); install it again</source>
        <translation>%1 kann nicht geladen werden (%2); installieren Sie es erneut</translation>
    </message>
    <message>
        <source>it is not a plugin</source>
        <translation>es ist kein Plugin</translation>
    </message>
    <message>
        <source>it was built for another interface</source>
        <translation>es wurde für eine andere Schnittstelle gebaut</translation>
    </message>
    <message>
        <source>%1 was built for Qt %2, but this is Qt %3; install the one for this Qt</source>
        <translation>%1 wurde für Qt %2 gebaut, dies ist aber Qt %3; installieren Sie das Modul für dieses Qt</translation>
    </message>
    <message>
        <source>KorvaneLineDebugger was not found in %1; install it to stop at lines</source>
        <translation>KorvaneLineDebugger wurde in %1 nicht gefunden; installieren Sie es, um an Zeilen anzuhalten</translation>
    </message>
    <message>
        <source>No custom script is loaded</source>
        <translation>Es ist kein eigenes Skript geladen</translation>
    </message>
</context>
<context>
    <name>tools::debugger_tables</name>
    <message>
        <source>Step</source>
        <translation>Schritt</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
    <message>
        <source>Function</source>
        <translation>Funktion</translation>
    </message>
    <message>
        <source>(without a name)</source>
        <translation>(ohne Namen)</translation>
    </message>
    <message>
        <source>Line</source>
        <translation>Zeile</translation>
    </message>
    <message>
        <source>Variable</source>
        <translation>Variable</translation>
    </message>
</context>
<context>
    <name>tools::script_debugger</name>
    <message>
        <source>Before the step %1</source>
        <translation>Vor dem Schritt %1</translation>
    </message>
    <message>
        <source>%1 in line %2</source>
        <translation>%1 in Zeile %2</translation>
    </message>
    <message>
        <source>The step %1 failed</source>
        <translation>Der Schritt %1 ist fehlgeschlagen</translation>
    </message>
    <message>
        <source>After the step %1</source>
        <translation>Nach dem Schritt %1</translation>
    </message>
</context>
<context>
    <name>tools::script_debugger_window</name>
    <message>
        <source>%1 - Script debugger</source>
        <translation>%1 - Skript-Debugger</translation>
    </message>
    <message>
        <source>&amp;Continue</source>
        <translation>&amp;Fortsetzen</translation>
    </message>
    <message>
        <source>Run to the next breakpoint</source>
        <translation>Bis zum nächsten Haltepunkt ausführen</translation>
    </message>
    <message>
        <source>&amp;Step</source>
        <translation>&amp;Schritt</translation>
    </message>
    <message>
        <source>Run this step of the export, or this line of the script</source>
        <translation>Diesen Schritt des Exports oder diese Zeile des Skripts ausführen</translation>
    </message>
    <message>
        <source>Step &amp;into</source>
        <translation>Schritt h&amp;inein</translation>
    </message>
    <message>
        <source>&amp;Run to action…</source>
        <translation>Bis zu &amp;Aktion…</translation>
    </message>
    <message>
        <source>Toggle &amp;breakpoint</source>
        <translation>&amp;Haltepunkt umschalten</translation>
    </message>
    <message>
        <source>&amp;Detach</source>
        <translation>&amp;Trennen</translation>
    </message>
    <message>
        <source>Let the export go on without the debugger, and close this window</source>
        <translation>Den Export ohne Debugger weiterlaufen lassen und dieses Fenster schließen</translation>
    </message>
    <message>
        <source>&amp;Debug</source>
        <translation>&amp;Debuggen</translation>
    </message>
    <message>
        <source>Debug</source>
        <translation>Debuggen</translation>
    </message>
    <message>
        <source>Source of the script</source>
        <translation>Quelltext des Skripts</translation>
    </message>
    <message>
        <source>Script (a click on a line number sets a breakpoint)</source>
        <translation>Skript (ein Klick auf eine Zeilennummer setzt einen Haltepunkt)</translation>
    </message>
    <message>
        <source>What the step is about</source>
        <translation>Worum es in dem Schritt geht</translation>
    </message>
    <message>
        <source>Default text</source>
        <translation>Standardtext</translation>
    </message>
    <message>
        <source>Answer of the script</source>
        <translation>Antwort des Skripts</translation>
    </message>
    <message>
        <source>Variables</source>
        <translation>Variablen</translation>
    </message>
    <message>
        <source>Actions to stop at</source>
        <translation>Aktionen, bei denen angehalten wird</translation>
    </message>
    <message>
        <source>&amp;Variables</source>
        <translation>&amp;Variablen</translation>
    </message>
    <message>
        <source>Stop at &amp;actions</source>
        <translation>Bei A&amp;ktionen anhalten</translation>
    </message>
    <message>
        <source>Evaluated expressions</source>
        <translation>Ausgewertete Ausdrücke</translation>
    </message>
    <message>
        <source>Expression to evaluate</source>
        <translation>Auszuwertender Ausdruck</translation>
    </message>
    <message>
        <source>for example entity.getName() or parameters.default_value.length</source>
        <translation>zum Beispiel entity.getName() oder parameters.default_value.length</translation>
    </message>
    <message>
        <source>&amp;Evaluate:</source>
        <translation>&amp;Auswerten:</translation>
    </message>
    <message>
        <source>Action</source>
        <translation>Aktion</translation>
    </message>
    <message>
        <source>The script has not answered yet</source>
        <translation>Das Skript hat noch nicht geantwortet</translation>
    </message>
    <message>
        <source>The script failed</source>
        <translation>Das Skript ist fehlgeschlagen</translation>
    </message>
    <message>
        <source>An empty text</source>
        <translation>Ein leerer Text</translation>
    </message>
    <message>
        <source>The script is running</source>
        <translation>Das Skript läuft</translation>
    </message>
    <message>
        <source>Attached: the next export stops at its first step</source>
        <translation>Verbunden: Der nächste Export hält beim ersten Schritt an</translation>
    </message>
    <message>
        <source>Attached: the next export stops at the breakpoints</source>
        <translation>Verbunden: Der nächste Export hält bei den Haltepunkten an</translation>
    </message>
    <message>
        <source>failed: %1</source>
        <translation>fehlgeschlagen: %1</translation>
    </message>
    <message>
        <source>Go to the next line, entering functions</source>
        <translation>Zur nächsten Zeile gehen, auch in aufgerufene Funktionen</translation>
    </message>
    <message>
        <source>Set or remove a breakpoint on the current line (F9)</source>
        <translation>Einen Haltepunkt in der aktuellen Zeile setzen oder entfernen (F9)</translation>
    </message>
    <message>
        <source>Script (this build cannot stop at lines, only at steps and actions)</source>
        <translation>Skript (dieser Build kann nicht bei Zeilen anhalten, nur bei Schritten und Aktionen)</translation>
    </message>
    <message>
        <source>Call stack</source>
        <translation>Aufrufliste</translation>
    </message>
</context>
<context>
    <name>tools::script_step</name>
    <message>
        <source>none</source>
        <translation>keine</translation>
    </message>
    <message>
        <source>Project</source>
        <translation>Projekt</translation>
    </message>
    <message>
        <source>Entity</source>
        <translation>Entität</translation>
    </message>
    <message>
        <source>Property</source>
        <translation>Eigenschaft</translation>
    </message>
    <message>
        <source>Enumeration</source>
        <translation>Aufzählung</translation>
    </message>
</context>
<context>
    <name>view::ddl_export_settings</name>
    <message>
        <source>Cannot debug custom script : custom script file &apos;%1&apos; doesn&apos;t exist</source>
        <translation>Das eigene Skript kann nicht debuggt werden: Die Skriptdatei ‚%1‘ existiert nicht</translation>
    </message>
    <message>
        <source>A new debugger window has been attached to the DDL SQL export process (&apos;KorvGenericDDLExport&apos; plugin) :
</source>
        <translation>Ein neues Debugger-Fenster wurde mit dem DDL-SQL-Export verbunden (Plugin ‚KorvGenericDDLExport‘):
</translation>
    </message>
    <message>
        <source>  1- save your settings and close this settings window ;
</source>
        <translation>  1- Speichern Sie Ihre Einstellungen und schließen Sie dieses Fenster;
</translation>
    </message>
    <message>
        <source>  2- execute the export process : you will be able to debug your custom javascript (putting a breakpoint for example).

</source>
        <translation>  2- Starten Sie den Export: Sie können Ihr JavaScript dann debuggen (zum Beispiel mit einem Haltepunkt).

</translation>
    </message>
    <message>
        <source>Note : debugger process is automatically detached from the DDL SQL export process when closing the debugger window.</source>
        <translation>Hinweis: Beim Schließen des Debugger-Fensters wird der Debugger automatisch vom DDL-SQL-Export getrennt.</translation>
    </message>
    <message>
        <source>

Other note : another way to start the debugger is to press the SHIFT key on the keyboard when executing the export process.</source>
        <translation>

Weiterer Hinweis: Der Debugger lässt sich auch starten, indem Sie beim Ausführen des Exports die Umschalttaste gedrückt halten.</translation>
    </message>
    <message>
        <source>Directory doesn&apos;t exist : &apos;%1&apos;</source>
        <translation>Das Verzeichnis existiert nicht: ‚%1‘</translation>
    </message>
    <message>
        <source>Custom script file doesn&apos;t exist : &apos;%1&apos;</source>
        <translation>Die Datei des eigenen Skripts existiert nicht: ‚%1‘</translation>
    </message>
    <message>
        <source>Error saving plugin settings : </source>
        <translation>Fehler beim Speichern der Plugin-Einstellungen: </translation>
    </message>
</context>
<context>
    <name>view::ddl_export_type_mapping</name>
    <message>
        <source>CPP type</source>
        <translation>C++-Typ</translation>
    </message>
    <message>
        <source>SQL type</source>
        <translation>SQL-Typ</translation>
    </message>
    <message>
        <source>Delete this mapping</source>
        <translation>Diese Zuordnung löschen</translation>
    </message>
</context>
<context>
    <name>wnd_ddl_export_settings</name>
    <message>
        <source>DDL export settings</source>
        <translation>Einstellungen des DDL-Exports</translation>
    </message>
    <message>
        <source>File location :</source>
        <translation>Speicherort:</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;&lt;span style=&quot; font-weight:600; text-decoration: underline;&quot;&gt;Note :&lt;/span&gt; you can put in this field a relative path to your Korvane project file (&lt;span style=&quot; font-style:italic;&quot;&gt;*.korv&lt;/span&gt; file).&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;&lt;span style=&quot; font-weight:600; text-decoration: underline;&quot;&gt;Hinweis:&lt;/span&gt; In diesem Feld können Sie einen Pfad relativ zu Ihrer Korvane-Projektdatei angeben (&lt;span style=&quot; font-style:italic;&quot;&gt;*.korv&lt;/span&gt;-Datei).&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>File location</source>
        <translation>Speicherort</translation>
    </message>
    <message>
        <source>Choose the file location</source>
        <translation>Speicherort wählen</translation>
    </message>
    <message>
        <source>...</source>
        <translation>...</translation>
    </message>
    <message>
        <source>Database type :</source>
        <translation>Datenbanktyp:</translation>
    </message>
    <message>
        <source>Database type</source>
        <translation>Datenbanktyp</translation>
    </message>
    <message>
        <source>Relationships :</source>
        <translation>Beziehungen:</translation>
    </message>
    <message>
        <source>Export relationships as foreign keys in database</source>
        <translation>Beziehungen als Fremdschlüssel der Datenbank exportieren</translation>
    </message>
    <message>
        <source>Schema :</source>
        <translation>Schema:</translation>
    </message>
    <message>
        <source>Build full database schema into 1 DDL SQL script</source>
        <translation>Vollständiges Datenbankschema in 1 DDL-SQL-Skript erzeugen</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;&lt;span style=&quot; font-weight:600;&quot;&gt;Note :&lt;/span&gt; to tag the project and create a new project version, go to Korvane main menu : &amp;quot;Actions &amp;gt;&amp;gt; Tag project state&amp;quot;.&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;&lt;span style=&quot; font-weight:600;&quot;&gt;Hinweis:&lt;/span&gt; Um den Projektstand als neue Version festzuhalten, wählen Sie im Hauptmenü von Korvane: &amp;quot;Aktionen &amp;gt;&amp;gt; Projektstand festhalten&amp;quot;.&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Build database schema evolution : 1 DDL SQL script file per project version</source>
        <translation>Evolution des Datenbankschemas erzeugen: 1 DDL-SQL-Skriptdatei je Projektversion</translation>
    </message>
    <message>
        <source>Build full database schema + schema evolution</source>
        <translation>Vollständiges Datenbankschema + Schemaevolution erzeugen</translation>
    </message>
    <message>
        <source>Mapping C++ type to database SQL type</source>
        <translation>Zuordnung von C++-Typen zu SQL-Typen der Datenbank</translation>
    </message>
    <message>
        <source>Restore default type mapping</source>
        <translation>Standardzuordnung wiederherstellen</translation>
    </message>
    <message>
        <source>Custom script (javascript file) to change the default behaviour of the export process</source>
        <translation>Eigenes Skript (JavaScript-Datei), das das Standardverhalten des Exports ändert</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;&lt;span style=&quot; font-weight:600;&quot;&gt;Note :&lt;/span&gt; to change the default behaviour of the export process, you can write your own custom javascript file.&lt;br/&gt;There is a custom javascript example file in the &lt;span style=&quot; font-style:italic;&quot;&gt;./samples/&lt;/span&gt; directory of Korvane package (&lt;span style=&quot; font-style:italic;&quot;&gt;./samples/custom_script.js&lt;/span&gt;).&lt;br/&gt;You can open this example file to have more details about how to implement your own custom javascript file.&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;&lt;span style=&quot; font-weight:600;&quot;&gt;Hinweis:&lt;/span&gt; Um das Standardverhalten des Exports zu ändern, können Sie eine eigene JavaScript-Datei schreiben.&lt;br/&gt;Ein Beispiel liegt im Verzeichnis &lt;span style=&quot; font-style:italic;&quot;&gt;./samples/&lt;/span&gt; des Korvane-Pakets (&lt;span style=&quot; font-style:italic;&quot;&gt;./samples/custom_script.js&lt;/span&gt;).&lt;br/&gt;In dieser Beispieldatei finden Sie Einzelheiten dazu, wie Sie Ihre eigene JavaScript-Datei schreiben.&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Custom script file :</source>
        <translation>Datei des eigenen Skripts:</translation>
    </message>
    <message>
        <source>Custom script file</source>
        <translation>Datei des eigenen Skripts</translation>
    </message>
    <message>
        <source>Choose the custom script file</source>
        <translation>Datei des eigenen Skripts wählen</translation>
    </message>
    <message>
        <source>Debug custom javascript file</source>
        <translation>Eigene JavaScript-Datei debuggen</translation>
    </message>
    <message>
        <source>Documentation - Manual - User guide</source>
        <translation>Dokumentation - Handbuch - Benutzeranleitung</translation>
    </message>
    <message>
        <source>Ok</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>zk</name>
    <message>
        <source>is in use by another process (waited %1 s for it); wait until that one has ended, or end it, and try again</source>
        <translation>wird von einem anderen Prozess verwendet (%1 s darauf gewartet); warten Sie, bis dieser beendet ist, oder beenden Sie ihn, und versuchen Sie es erneut</translation>
    </message>
    <message>
        <source>cannot be read or written: there is not enough memory</source>
        <translation>kann nicht gelesen oder geschrieben werden: Der Speicher reicht nicht aus</translation>
    </message>
    <message>
        <source>cannot be written (%1); check its permissions and those of its folder</source>
        <translation>kann nicht geschrieben werden (%1); prüfen Sie die Rechte der Datei und die des Ordners</translation>
    </message>
    <message>
        <source>cannot be read or written (%1); check the disk</source>
        <translation>kann nicht gelesen oder geschrieben werden (%1); prüfen Sie den Datenträger</translation>
    </message>
    <message>
        <source>is damaged (%1); restore it from a copy</source>
        <translation>ist beschädigt (%1); stellen Sie die Datei aus einer Kopie wieder her</translation>
    </message>
    <message>
        <source>cannot be written: the disk is full; make room and try again</source>
        <translation>kann nicht geschrieben werden: Der Datenträger ist voll; schaffen Sie Platz und versuchen Sie es erneut</translation>
    </message>
    <message>
        <source>cannot be opened (%1); check its permissions and those of its folder</source>
        <translation>kann nicht geöffnet werden (%1); prüfen Sie die Rechte der Datei und die des Ordners</translation>
    </message>
    <message>
        <source>is not a Korvane project file (.korv)</source>
        <translation>ist keine Korvane-Projektdatei (.korv)</translation>
    </message>
    <message>
        <source>contains a view &apos;%1&apos;, which does not belong in a project file; remove it, or restore the file from a backup</source>
        <translation>enthält eine Sicht ‚%1‘, die nicht in eine Projektdatei gehört; entfernen Sie sie, oder stellen Sie die Datei aus einer Sicherung wieder her</translation>
    </message>
    <message>
        <source>contains a trigger &apos;%1&apos;, which does not belong in a project file; remove it, or restore the file from a backup</source>
        <translation>enthält einen Trigger ‚%1‘, der nicht in eine Projektdatei gehört; entfernen Sie ihn, oder stellen Sie die Datei aus einer Sicherung wieder her</translation>
    </message>
    <message>
        <source>cannot be opened (%1); check its permissions</source>
        <translation>kann nicht geöffnet werden (%1); prüfen Sie die Rechte der Datei</translation>
    </message>
    <message>
        <source>cannot be read (%1); check the disk</source>
        <translation>kann nicht gelesen werden (%1); prüfen Sie den Datenträger</translation>
    </message>
    <message>
        <source>does not exist; check the name</source>
        <translation>existiert nicht; prüfen Sie den Namen</translation>
    </message>
    <message>
        <source>cannot be opened (%1); check the permissions of its folder</source>
        <translation>kann nicht geöffnet werden (%1); prüfen Sie die Rechte des Ordners</translation>
    </message>
    <message>
        <source>cannot be opened (%1); check the name</source>
        <translation>kann nicht geöffnet werden (%1); prüfen Sie den Namen</translation>
    </message>
    <message>
        <source>is empty, not a Korvane project</source>
        <translation>ist leer und kein Korvane-Projekt</translation>
    </message>
    <message>
        <source>is a model in text form, not a project; import it first (korvane import MODEL.json PROJECT.korv)</source>
        <translation>ist ein Modell in Textform, kein Projekt; importieren Sie es zuerst (korvane import MODEL.json PROJECT.korv)</translation>
    </message>
    <message>
        <source>is %1, where only a journal of the project may be; move it away and try again</source>
        <translation>ist %1, wo nur ein Journal des Projekts sein darf; verschieben Sie das und versuchen Sie es erneut</translation>
    </message>
    <message>
        <source>cannot be read (%1); check its permissions</source>
        <translation>kann nicht gelesen werden (%1); prüfen Sie die Rechte der Datei</translation>
    </message>
    <message>
        <source>cannot be read (%1)</source>
        <translation>kann nicht gelesen werden (%1)</translation>
    </message>
    <message>
        <source>cannot be looked at (%1)</source>
        <translation>kann nicht untersucht werden (%1)</translation>
    </message>
    <message>
        <source>is a journal that names another file, which opening the project would delete; korvane makes no such journal. Remove it if you do not know where it comes from, and try again</source>
        <translation>ist ein Journal, das eine andere Datei nennt, die beim Öffnen des Projekts gelöscht würde; korvane legt kein solches Journal an. Entfernen Sie es, wenn Sie nicht wissen, woher es kommt, und versuchen Sie es erneut</translation>
    </message>
    <message>
        <source>is the journal of another database, which the project would destroy; move it away and try again</source>
        <translation>ist das Journal einer anderen Datenbank, das durch das Projekt zerstört würde; verschieben Sie es und versuchen Sie es erneut</translation>
    </message>
    <message>
        <source>is a write-ahead log, which this project does not use but would take for its newest contents; move it away and try again</source>
        <translation>ist ein Write-Ahead-Log, den dieses Projekt nicht verwendet, aber für seinen neuesten Inhalt halten würde; verschieben Sie ihn und versuchen Sie es erneut</translation>
    </message>
    <message>
        <source>no project file is named</source>
        <translation>es ist keine Projektdatei angegeben</translation>
    </message>
    <message>
        <source>is %1, not a project file</source>
        <translation>ist %1, keine Projektdatei</translation>
    </message>
    <message>
        <source>belongs to a database that is not there, and would be taken for a part of the new project; move it away and try again</source>
        <translation>gehört zu einer Datenbank, die nicht vorhanden ist, und würde für einen Teil des neuen Projekts gehalten; verschieben Sie die Datei und versuchen Sie es erneut</translation>
    </message>
    <message>
        <source>cannot be changed: its name of %1 bytes is too long, as the name of its journal is %2 bytes longer and the limit is %3; choose a shorter one</source>
        <translation>kann nicht geändert werden: Der Name ist mit %1 Bytes zu lang, denn der Name des Journals ist %2 Bytes länger, und die Grenze ist %3; wählen Sie einen kürzeren</translation>
    </message>
    <message>
        <source>cannot be changed: its path of %1 bytes is too long, as the name of its journal is %2 bytes longer and the limit is %3; choose a shorter one</source>
        <translation>kann nicht geändert werden: Der Pfad ist mit %1 Bytes zu lang, denn der Name des Journals ist %2 Bytes länger, und die Grenze ist %3; wählen Sie einen kürzeren</translation>
    </message>
    <message>
        <source>The database is not open</source>
        <translation>Die Datenbank ist nicht geöffnet</translation>
    </message>
    <message>
        <source>cannot be opened: Qt&apos;s SQLite driver brings an SQLite of its own along; use a Qt whose driver is built with the system&apos;s one</source>
        <translation>kann nicht geöffnet werden: Qts SQLite-Treiber bringt ein eigenes SQLite mit; verwenden Sie ein Qt, dessen Treiber mit dem des Systems gebaut ist</translation>
    </message>
</context>
</TS>
