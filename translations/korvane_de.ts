<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
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
  --KorvGenericDDLExport_db_type=&lt;numeric value&gt; : [Optional] Database type (0=default, 1=sqlite, 2=mysql, 3=postgresql, 4=oracle, 5=mssqlserver)</source>
        <translation>
  --KorvGenericDDLExport_db_type=&lt;Zahl&gt; : [Optional] Datenbanktyp (0=default, 1=sqlite, 2=mysql, 3=postgresql, 4=oracle, 5=mssqlserver)</translation>
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
  --KorvGenericDDLExport_schema_type=&lt;Zahl&gt; : [Optional] Art des Schemaexports (0=full, 1=evolution, 2=full_and_evolution)</translation>
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
        <translation>Das Exportverzeichnis &apos;%1&apos; existiert nicht.
Soll es angelegt und der Export gestartet werden?</translation>
    </message>
    <message>
        <source>Export path to create DDL SQL script doesn&apos;t exist : &apos;%1&apos;</source>
        <translation>Der Exportpfad für das DDL-SQL-Skript existiert nicht: &apos;%1&apos;</translation>
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
        <translation>%1: DDL-SQL-Skript für das Projekt &apos;%2&apos; erzeugt: &apos;%3&apos;</translation>
    </message>
    <message>
        <source>%1 : create table DDL SQL script for entity &apos;%2&apos; (%3)</source>
        <translation>%1: DDL-SQL-Skript zum Anlegen der Tabelle der Entität &apos;%2&apos; (%3)</translation>
    </message>
    <message>
        <source>%1 : create index DDL SQL script for property &apos;%2&apos; (%3)</source>
        <translation>%1: DDL-SQL-Skript zum Anlegen des Index der Eigenschaft &apos;%2&apos; (%3)</translation>
    </message>
    <message>
        <source>%1 : create extra-table DDL SQL script for relationship n-n &apos;%2&apos; (%3)</source>
        <translation>%1: DDL-SQL-Skript zum Anlegen der Verknüpfungstabelle der n:n-Beziehung &apos;%2&apos; (%3)</translation>
    </message>
    <message>
        <source>%1 : add foreign key DDL SQL script for entity &apos;%2&apos; : property &apos;%3&apos;, target entity &apos;%4&apos; (%5)</source>
        <translation>%1: DDL-SQL-Skript zum Hinzufügen des Fremdschlüssels der Entität &apos;%2&apos;: Eigenschaft &apos;%3&apos;, Zielentität &apos;%4&apos; (%5)</translation>
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
        <translation>Entwicklung des Datenbankschemas</translation>
    </message>
    <message>
        <source>%1 : drop table DDL SQL script for entity &apos;%2&apos; (%3)</source>
        <translation>%1: DDL-SQL-Skript zum Löschen der Tabelle der Entität &apos;%2&apos; (%3)</translation>
    </message>
    <message>
        <source>%1 : rename table DDL SQL script for entity &apos;%2&apos; (%3)</source>
        <translation>%1: DDL-SQL-Skript zum Umbenennen der Tabelle der Entität &apos;%2&apos; (%3)</translation>
    </message>
    <message>
        <source>%1 : drop column DDL SQL script for property &apos;%2&apos; (%3)</source>
        <translation>%1: DDL-SQL-Skript zum Löschen der Spalte der Eigenschaft &apos;%2&apos; (%3)</translation>
    </message>
    <message>
        <source>%1 : drop index DDL SQL script for property &apos;%2&apos; (%3)</source>
        <translation>%1: DDL-SQL-Skript zum Löschen des Index der Eigenschaft &apos;%2&apos; (%3)</translation>
    </message>
    <message>
        <source>%1 : add column DDL SQL script for property &apos;%2&apos; (%3)</source>
        <translation>%1: DDL-SQL-Skript zum Hinzufügen der Spalte der Eigenschaft &apos;%2&apos; (%3)</translation>
    </message>
    <message>
        <source>%1 : rename column DDL SQL script for property &apos;%2&apos; (%3)</source>
        <translation>%1: DDL-SQL-Skript zum Umbenennen der Spalte der Eigenschaft &apos;%2&apos; (%3)</translation>
    </message>
    <message>
        <source>%1 : drop foreign key DDL SQL script for relationship &apos;%2&apos; (%3)</source>
        <translation>%1: DDL-SQL-Skript zum Löschen des Fremdschlüssels der Beziehung &apos;%2&apos; (%3)</translation>
    </message>
    <message>
        <source>Error loading all project historics :
%1</source>
        <translation>Fehler beim Laden der Projekthistorie:
%1</translation>
    </message>
    <message>
        <source>Cannot get temp directory to extract tag project state</source>
        <translation>Für das Entpacken des markierten Projektstands ist kein temporäres Verzeichnis verfügbar</translation>
    </message>
    <message>
        <source>An error occurred loading project tag &apos;%1&apos; :
%2</source>
        <translation>Beim Laden des markierten Projektstands &apos;%1&apos; ist ein Fehler aufgetreten:
%2</translation>
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
        <source>Go to the next line of the script, in the functions it calls as well</source>
        <translation>Zur nächsten Zeile des Skripts gehen, auch in aufgerufenen Funktionen</translation>
    </message>
    <message>
        <source>&amp;Run to action…</source>
        <translation>Bis zur &amp;Aktion ausführen…</translation>
    </message>
    <message>
        <source>Toggle &amp;breakpoint</source>
        <translation>&amp;Haltepunkt umschalten</translation>
    </message>
    <message>
        <source>Stop at the line of the cursor, or no longer (F9)</source>
        <translation>An der Zeile der Schreibmarke anhalten oder nicht mehr anhalten (F9)</translation>
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
        <source>Script (this program stops at steps and actions only, not at lines)</source>
        <translation>Skript (dieses Programm hält nur an Schritten und Aktionen an, nicht an Zeilen)</translation>
    </message>
    <message>
        <source>What the step is about</source>
        <translation>Worum es in dem Schritt geht</translation>
    </message>
    <message>
        <source>Step</source>
        <translation>Schritt</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
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
        <source>Functions that are running</source>
        <translation>Laufende Funktionen</translation>
    </message>
    <message>
        <source>Function</source>
        <translation>Funktion</translation>
    </message>
    <message>
        <source>Line</source>
        <translation>Zeile</translation>
    </message>
    <message>
        <source>Variables</source>
        <translation>Variablen</translation>
    </message>
    <message>
        <source>Variable</source>
        <translation>Variable</translation>
    </message>
    <message>
        <source>Actions to stop at</source>
        <translation>Aktionen, an denen angehalten wird</translation>
    </message>
    <message>
        <source>&amp;Variables</source>
        <translation>&amp;Variablen</translation>
    </message>
    <message>
        <source>Stop at &amp;actions</source>
        <translation>An A&amp;ktionen anhalten</translation>
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
        <source>(without a name)</source>
        <translation>(ohne Namen)</translation>
    </message>
    <message>
        <source>The script is running</source>
        <translation>Das Skript läuft</translation>
    </message>
    <message>
        <source>Attached: the next export stops at its first step</source>
        <translation>Verbunden: Der nächste Export hält an seinem ersten Schritt an</translation>
    </message>
    <message>
        <source>Attached: the next export stops at the breakpoints</source>
        <translation>Verbunden: Der nächste Export hält an den Haltepunkten an</translation>
    </message>
    <message>
        <source>failed: %1</source>
        <translation>fehlgeschlagen: %1</translation>
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
        <translation>Das eigene Skript kann nicht debuggt werden: Die Skriptdatei &apos;%1&apos; existiert nicht</translation>
    </message>
    <message>
        <source>A new debugger window has been attached to the DDL SQL export process (&apos;KorvGenericDDLExport&apos; plugin) :
</source>
        <translation>Ein neues Debugger-Fenster wurde mit dem DDL-SQL-Export verbunden (Plugin &apos;KorvGenericDDLExport&apos;):
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
        <translation>Das Verzeichnis existiert nicht: &apos;%1&apos;</translation>
    </message>
    <message>
        <source>Custom script file doesn&apos;t exist : &apos;%1&apos;</source>
        <translation>Die Datei des eigenen Skripts existiert nicht: &apos;%1&apos;</translation>
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
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;&lt;span style=&quot; font-weight:600;&quot;&gt;Hinweis:&lt;/span&gt; Um das Projekt zu markieren und eine neue Projektversion anzulegen, wählen Sie im Hauptmenü von Korvane: &amp;quot;Actions &amp;gt;&amp;gt; Tag project state&amp;quot;.&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Build database schema evolution : 1 DDL SQL script file per project version</source>
        <translation>Entwicklung des Datenbankschemas erzeugen: 1 DDL-SQL-Skriptdatei je Projektversion</translation>
    </message>
    <message>
        <source>Build full database schema + schema evolution</source>
        <translation>Vollständiges Datenbankschema + Schemaentwicklung erzeugen</translation>
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
        <translation>Ok</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
</TS>
