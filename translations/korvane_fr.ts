<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr" sourcelanguage="en">
<context>
    <name>plugin::ddl_export</name>
    <message>
        <source>Export to DDL SQL script file</source>
        <translation>Exporter vers un fichier script SQL DDL</translation>
    </message>
    <message>
        <source>This plugin exports current opened project to a DDL SQL script file.</source>
        <translation>Ce plugin exporte le projet ouvert vers un fichier script SQL DDL.</translation>
    </message>
    <message>
        <source>
  !!! Note : this plugin loads automatically previous parameters values before starting the export process, but you can use following parameters to override them !!!</source>
        <translation>
  !!! Remarque : ce plugin charge automatiquement les valeurs précédentes des paramètres avant de démarrer l&apos;export, mais vous pouvez les remplacer par les paramètres suivants !!!</translation>
    </message>
    <message>
        <source>
  --KorvGenericDDLExport_path=&quot;&lt;Export Path&gt;&quot; : [Optional] DDL export path parameter</source>
        <translation>
  --KorvGenericDDLExport_path=&quot;&lt;Chemin d&apos;export&gt;&quot; : [Optionnel] Chemin d&apos;export des scripts DDL</translation>
    </message>
    <message>
        <source>
  --KorvGenericDDLExport_db_type=&lt;numeric value&gt; : [Optional] Database type (0=default, 1=sqlite, 2=mysql, 3=postgresql, 4=oracle, 5=mssqlserver)</source>
        <translation>
  --KorvGenericDDLExport_db_type=&lt;valeur numérique&gt; : [Optionnel] Type de base de données (0=default, 1=sqlite, 2=mysql, 3=postgresql, 4=oracle, 5=mssqlserver)</translation>
    </message>
    <message>
        <source>
  --KorvGenericDDLExport_relation_as_fk=0/1 : [Optional] Export relationships as foreign keys in database</source>
        <translation>
  --KorvGenericDDLExport_relation_as_fk=0/1 : [Optionnel] Exporter les relations comme clés étrangères de la base de données</translation>
    </message>
    <message>
        <source>
  --KorvGenericDDLExport_schema_type=&lt;numeric value&gt; : [Optional] Way to export database schema (0=full, 1=evolution, 2=full_and_evolution)</source>
        <translation>
  --KorvGenericDDLExport_schema_type=&lt;valeur numérique&gt; : [Optionnel] Façon d&apos;exporter le schéma de la base de données (0=full, 1=evolution, 2=full_and_evolution)</translation>
    </message>
    <message>
        <source>
  --KorvGenericDDLExport_custom_javacript=&quot;&lt;Custom JS&gt;&quot; : [Optional] Custom script (javascript file) to change the default behaviour of the export process</source>
        <translation>
  --KorvGenericDDLExport_custom_javacript=&quot;&lt;JS personnalisé&gt;&quot; : [Optionnel] Script personnalisé (fichier javascript) pour modifier le comportement par défaut de l&apos;export</translation>
    </message>
    <message>
        <source>Error loading plugin settings : </source>
        <translation>Erreur lors du chargement des paramètres du plugin : </translation>
    </message>
    <message>
        <source>Cannot export project to DDL file : project name is empty</source>
        <translation>Impossible d&apos;exporter le projet vers un fichier DDL : le nom du projet est vide</translation>
    </message>
    <message>
        <source>Cannot create a builder to generate DDL SQL script</source>
        <translation>Impossible de créer un générateur de script SQL DDL</translation>
    </message>
    <message>
        <source>Export directory &apos;%1&apos; doesn&apos;t exist.
Do you want to create it and start the export process ?</source>
        <translation>Le répertoire d&apos;export &apos;%1&apos; n&apos;existe pas.
Voulez-vous le créer et démarrer l&apos;export ?</translation>
    </message>
    <message>
        <source>Export path to create DDL SQL script doesn&apos;t exist : &apos;%1&apos;</source>
        <translation>Le chemin d&apos;export pour créer le script SQL DDL n&apos;existe pas : &apos;%1&apos;</translation>
    </message>
</context>
<context>
    <name>plugin::ddl_export_builder</name>
    <message>
        <source>Directory to create DDL SQL script doesn&apos;t exist : %1</source>
        <translation>Le répertoire où créer le script SQL DDL n&apos;existe pas : %1</translation>
    </message>
    <message>
        <source>There is no plugin associated to the DDL builder class</source>
        <translation>Aucun plugin n&apos;est associé à la classe du générateur DDL</translation>
    </message>
    <message>
        <source>%1 : DDL export begin (%2)</source>
        <translation>%1 : début de l&apos;export DDL (%2)</translation>
    </message>
    <message>
        <source>%1 : DDL export end (%2)</source>
        <translation>%1 : fin de l&apos;export DDL (%2)</translation>
    </message>
    <message>
        <source>%1 DDL SQL script created for project &apos;%2&apos; : &apos;%3&apos;</source>
        <translation>%1 : script SQL DDL créé pour le projet &apos;%2&apos; : &apos;%3&apos;</translation>
    </message>
    <message>
        <source>%1 : create table DDL SQL script for entity &apos;%2&apos; (%3)</source>
        <translation>%1 : script SQL DDL de création de la table de l&apos;entité &apos;%2&apos; (%3)</translation>
    </message>
    <message>
        <source>%1 : create index DDL SQL script for property &apos;%2&apos; (%3)</source>
        <translation>%1 : script SQL DDL de création de l&apos;index de la propriété &apos;%2&apos; (%3)</translation>
    </message>
    <message>
        <source>%1 : create extra-table DDL SQL script for relationship n-n &apos;%2&apos; (%3)</source>
        <translation>%1 : script SQL DDL de création de la table de liaison de la relation n-n &apos;%2&apos; (%3)</translation>
    </message>
    <message>
        <source>%1 : add foreign key DDL SQL script for entity &apos;%2&apos; : property &apos;%3&apos;, target entity &apos;%4&apos; (%5)</source>
        <translation>%1 : script SQL DDL d&apos;ajout de la clé étrangère de l&apos;entité &apos;%2&apos; : propriété &apos;%3&apos;, entité cible &apos;%4&apos; (%5)</translation>
    </message>
    <message>
        <source>Invalid previous project</source>
        <translation>Projet précédent non valide</translation>
    </message>
    <message>
        <source>Invalid current project</source>
        <translation>Projet courant non valide</translation>
    </message>
    <message>
        <source>Previous project doesn&apos;t have a valid list of entities</source>
        <translation>La liste des entités du projet précédent n&apos;est pas valide</translation>
    </message>
    <message>
        <source>Current project doesn&apos;t have a valid list of entities</source>
        <translation>La liste des entités du projet courant n&apos;est pas valide</translation>
    </message>
    <message>
        <source>Database schema evolution</source>
        <translation>Évolution du schéma de la base de données</translation>
    </message>
    <message>
        <source>%1 : drop table DDL SQL script for entity &apos;%2&apos; (%3)</source>
        <translation>%1 : script SQL DDL de suppression de la table de l&apos;entité &apos;%2&apos; (%3)</translation>
    </message>
    <message>
        <source>%1 : rename table DDL SQL script for entity &apos;%2&apos; (%3)</source>
        <translation>%1 : script SQL DDL de renommage de la table de l&apos;entité &apos;%2&apos; (%3)</translation>
    </message>
    <message>
        <source>%1 : drop column DDL SQL script for property &apos;%2&apos; (%3)</source>
        <translation>%1 : script SQL DDL de suppression de la colonne de la propriété &apos;%2&apos; (%3)</translation>
    </message>
    <message>
        <source>%1 : drop index DDL SQL script for property &apos;%2&apos; (%3)</source>
        <translation>%1 : script SQL DDL de suppression de l&apos;index de la propriété &apos;%2&apos; (%3)</translation>
    </message>
    <message>
        <source>%1 : add column DDL SQL script for property &apos;%2&apos; (%3)</source>
        <translation>%1 : script SQL DDL d&apos;ajout de la colonne de la propriété &apos;%2&apos; (%3)</translation>
    </message>
    <message>
        <source>%1 : rename column DDL SQL script for property &apos;%2&apos; (%3)</source>
        <translation>%1 : script SQL DDL de renommage de la colonne de la propriété &apos;%2&apos; (%3)</translation>
    </message>
    <message>
        <source>%1 : drop foreign key DDL SQL script for relationship &apos;%2&apos; (%3)</source>
        <translation>%1 : script SQL DDL de suppression de la clé étrangère de la relation &apos;%2&apos; (%3)</translation>
    </message>
    <message>
        <source>Error loading all project historics :
%1</source>
        <translation>Erreur lors du chargement de l&apos;historique du projet :
%1</translation>
    </message>
    <message>
        <source>Cannot get temp directory to extract tag project state</source>
        <translation>Impossible d&apos;obtenir un répertoire temporaire pour extraire la version étiquetée du projet</translation>
    </message>
    <message>
        <source>An error occurred loading project tag &apos;%1&apos; :
%2</source>
        <translation>Une erreur est survenue lors du chargement de la version étiquetée &apos;%1&apos; du projet :
%2</translation>
    </message>
    <message>
        <source>Cannot uncompress project file : %1</source>
        <translation>Impossible de décompresser le fichier de projet : %1</translation>
    </message>
    <message>
        <source>An error occurred opening project file : %1</source>
        <translation>Une erreur est survenue à l&apos;ouverture du fichier de projet : %1</translation>
    </message>
    <message>
        <source>This project doesn&apos;t have a valid list of entities</source>
        <translation>La liste des entités de ce projet n&apos;est pas valide</translation>
    </message>
    <message>
        <source>Full database schema</source>
        <translation>Schéma complet de la base de données</translation>
    </message>
    <message>
        <source>An error occurred opening SQL file : %1</source>
        <translation>Une erreur est survenue à l&apos;ouverture du fichier SQL : %1</translation>
    </message>
    <message>
        <source>An error occurred writing SQL file : %1</source>
        <translation>Une erreur est survenue à l&apos;écriture du fichier SQL : %1</translation>
    </message>
</context>
<context>
    <name>tools::script_debugger</name>
    <message>
        <source>Before the step %1</source>
        <translation>Avant l&apos;étape %1</translation>
    </message>
    <message>
        <source>%1 in line %2</source>
        <translation>%1, ligne %2</translation>
    </message>
    <message>
        <source>The step %1 failed</source>
        <translation>L&apos;étape %1 a échoué</translation>
    </message>
    <message>
        <source>After the step %1</source>
        <translation>Après l&apos;étape %1</translation>
    </message>
</context>
<context>
    <name>tools::script_debugger_window</name>
    <message>
        <source>%1 - Script debugger</source>
        <translation>%1 - Débogueur de script</translation>
    </message>
    <message>
        <source>&amp;Continue</source>
        <translation>&amp;Continuer</translation>
    </message>
    <message>
        <source>Run to the next breakpoint</source>
        <translation>Exécuter jusqu&apos;au prochain point d&apos;arrêt</translation>
    </message>
    <message>
        <source>&amp;Step</source>
        <translation>&amp;Pas à pas</translation>
    </message>
    <message>
        <source>Run this step of the export, or this line of the script</source>
        <translation>Exécuter cette étape de l&apos;export, ou cette ligne du script</translation>
    </message>
    <message>
        <source>Step &amp;into</source>
        <translation>Pas à pas &amp;détaillé</translation>
    </message>
    <message>
        <source>Go to the next line of the script, in the functions it calls as well</source>
        <translation>Aller à la ligne suivante du script, y compris dans les fonctions qu&apos;elle appelle</translation>
    </message>
    <message>
        <source>&amp;Run to action…</source>
        <translation>&amp;Exécuter jusqu&apos;à l&apos;action…</translation>
    </message>
    <message>
        <source>Toggle &amp;breakpoint</source>
        <translation>&amp;Basculer le point d&apos;arrêt</translation>
    </message>
    <message>
        <source>Stop at the line of the cursor, or no longer (F9)</source>
        <translation>S&apos;arrêter, ou ne plus s&apos;arrêter, à la ligne du curseur (F9)</translation>
    </message>
    <message>
        <source>&amp;Detach</source>
        <translation>Dé&amp;tacher</translation>
    </message>
    <message>
        <source>Let the export go on without the debugger, and close this window</source>
        <translation>Laisser l&apos;export se poursuivre sans le débogueur et fermer cette fenêtre</translation>
    </message>
    <message>
        <source>&amp;Debug</source>
        <translation>&amp;Débogage</translation>
    </message>
    <message>
        <source>Debug</source>
        <translation>Débogage</translation>
    </message>
    <message>
        <source>Source of the script</source>
        <translation>Source du script</translation>
    </message>
    <message>
        <source>Script (a click on a line number sets a breakpoint)</source>
        <translation>Script (un clic sur un numéro de ligne pose un point d&apos;arrêt)</translation>
    </message>
    <message>
        <source>Script (this program stops at steps and actions only, not at lines)</source>
        <translation>Script (ce programme ne s&apos;arrête qu&apos;aux étapes et aux actions, pas aux lignes)</translation>
    </message>
    <message>
        <source>What the step is about</source>
        <translation>Ce que concerne l&apos;étape</translation>
    </message>
    <message>
        <source>Step</source>
        <translation>Étape</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Valeur</translation>
    </message>
    <message>
        <source>Default text</source>
        <translation>Texte par défaut</translation>
    </message>
    <message>
        <source>Answer of the script</source>
        <translation>Réponse du script</translation>
    </message>
    <message>
        <source>Functions that are running</source>
        <translation>Fonctions en cours d&apos;exécution</translation>
    </message>
    <message>
        <source>Function</source>
        <translation>Fonction</translation>
    </message>
    <message>
        <source>Line</source>
        <translation>Ligne</translation>
    </message>
    <message>
        <source>Variables</source>
        <translation>Variables</translation>
    </message>
    <message>
        <source>Variable</source>
        <translation>Variable</translation>
    </message>
    <message>
        <source>Actions to stop at</source>
        <translation>Actions auxquelles s&apos;arrêter</translation>
    </message>
    <message>
        <source>&amp;Variables</source>
        <translation>&amp;Variables</translation>
    </message>
    <message>
        <source>Stop at &amp;actions</source>
        <translation>Arrêt aux &amp;actions</translation>
    </message>
    <message>
        <source>Evaluated expressions</source>
        <translation>Expressions évaluées</translation>
    </message>
    <message>
        <source>Expression to evaluate</source>
        <translation>Expression à évaluer</translation>
    </message>
    <message>
        <source>for example entity.getName() or parameters.default_value.length</source>
        <translation>par exemple entity.getName() ou parameters.default_value.length</translation>
    </message>
    <message>
        <source>&amp;Evaluate:</source>
        <translation>Éva&amp;luer :</translation>
    </message>
    <message>
        <source>Action</source>
        <translation>Action</translation>
    </message>
    <message>
        <source>The script has not answered yet</source>
        <translation>Le script n&apos;a pas encore répondu</translation>
    </message>
    <message>
        <source>The script failed</source>
        <translation>Le script a échoué</translation>
    </message>
    <message>
        <source>An empty text</source>
        <translation>Un texte vide</translation>
    </message>
    <message>
        <source>(without a name)</source>
        <translation>(sans nom)</translation>
    </message>
    <message>
        <source>The script is running</source>
        <translation>Le script s&apos;exécute</translation>
    </message>
    <message>
        <source>Attached: the next export stops at its first step</source>
        <translation>Attaché : le prochain export s&apos;arrêtera à sa première étape</translation>
    </message>
    <message>
        <source>Attached: the next export stops at the breakpoints</source>
        <translation>Attaché : le prochain export s&apos;arrêtera aux points d&apos;arrêt</translation>
    </message>
    <message>
        <source>failed: %1</source>
        <translation>échec : %1</translation>
    </message>
</context>
<context>
    <name>tools::script_step</name>
    <message>
        <source>none</source>
        <translation>aucun</translation>
    </message>
    <message>
        <source>Project</source>
        <translation>Projet</translation>
    </message>
    <message>
        <source>Entity</source>
        <translation>Entité</translation>
    </message>
    <message>
        <source>Property</source>
        <translation>Propriété</translation>
    </message>
    <message>
        <source>Enumeration</source>
        <translation>Énumération</translation>
    </message>
</context>
<context>
    <name>view::ddl_export_settings</name>
    <message>
        <source>Cannot debug custom script : custom script file &apos;%1&apos; doesn&apos;t exist</source>
        <translation>Impossible de déboguer le script personnalisé : le fichier &apos;%1&apos; n&apos;existe pas</translation>
    </message>
    <message>
        <source>A new debugger window has been attached to the DDL SQL export process (&apos;KorvGenericDDLExport&apos; plugin) :
</source>
        <translation>Une nouvelle fenêtre de débogage a été attachée à l&apos;export SQL DDL (plugin &apos;KorvGenericDDLExport&apos;) :
</translation>
    </message>
    <message>
        <source>  1- save your settings and close this settings window ;
</source>
        <translation>  1- enregistrez vos paramètres et fermez cette fenêtre ;
</translation>
    </message>
    <message>
        <source>  2- execute the export process : you will be able to debug your custom javascript (putting a breakpoint for example).

</source>
        <translation>  2- lancez l&apos;export : vous pourrez déboguer votre script javascript (en posant un point d&apos;arrêt par exemple).

</translation>
    </message>
    <message>
        <source>Note : debugger process is automatically detached from the DDL SQL export process when closing the debugger window.</source>
        <translation>Remarque : le débogueur est automatiquement détaché de l&apos;export SQL DDL à la fermeture de sa fenêtre.</translation>
    </message>
    <message>
        <source>

Other note : another way to start the debugger is to press the SHIFT key on the keyboard when executing the export process.</source>
        <translation>

Autre remarque : le débogueur démarre également si vous maintenez la touche MAJ du clavier enfoncée en lançant l&apos;export.</translation>
    </message>
    <message>
        <source>Directory doesn&apos;t exist : &apos;%1&apos;</source>
        <translation>Le répertoire n&apos;existe pas : &apos;%1&apos;</translation>
    </message>
    <message>
        <source>Custom script file doesn&apos;t exist : &apos;%1&apos;</source>
        <translation>Le fichier de script personnalisé n&apos;existe pas : &apos;%1&apos;</translation>
    </message>
    <message>
        <source>Error saving plugin settings : </source>
        <translation>Erreur lors de l&apos;enregistrement des paramètres du plugin : </translation>
    </message>
</context>
<context>
    <name>view::ddl_export_type_mapping</name>
    <message>
        <source>CPP type</source>
        <translation>Type C++</translation>
    </message>
    <message>
        <source>SQL type</source>
        <translation>Type SQL</translation>
    </message>
    <message>
        <source>Delete this mapping</source>
        <translation>Supprimer cette correspondance</translation>
    </message>
</context>
<context>
    <name>wnd_ddl_export_settings</name>
    <message>
        <source>DDL export settings</source>
        <translation>Paramètres de l&apos;export DDL</translation>
    </message>
    <message>
        <source>File location :</source>
        <translation>Emplacement :</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;&lt;span style=&quot; font-weight:600; text-decoration: underline;&quot;&gt;Note :&lt;/span&gt; you can put in this field a relative path to your Korvane project file (&lt;span style=&quot; font-style:italic;&quot;&gt;*.korv&lt;/span&gt; file).&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;&lt;span style=&quot; font-weight:600; text-decoration: underline;&quot;&gt;Remarque :&lt;/span&gt; vous pouvez saisir dans ce champ un chemin relatif à votre fichier de projet Korvane (fichier &lt;span style=&quot; font-style:italic;&quot;&gt;*.korv&lt;/span&gt;).&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>File location</source>
        <translation>Emplacement</translation>
    </message>
    <message>
        <source>Choose the file location</source>
        <translation>Choisir l&apos;emplacement</translation>
    </message>
    <message>
        <source>...</source>
        <translation>...</translation>
    </message>
    <message>
        <source>Database type :</source>
        <translation>Type de base de données :</translation>
    </message>
    <message>
        <source>Database type</source>
        <translation>Type de base de données</translation>
    </message>
    <message>
        <source>Relationships :</source>
        <translation>Relations :</translation>
    </message>
    <message>
        <source>Export relationships as foreign keys in database</source>
        <translation>Exporter les relations comme clés étrangères de la base de données</translation>
    </message>
    <message>
        <source>Schema :</source>
        <translation>Schéma :</translation>
    </message>
    <message>
        <source>Build full database schema into 1 DDL SQL script</source>
        <translation>Générer le schéma complet de la base de données dans 1 script SQL DDL</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;&lt;span style=&quot; font-weight:600;&quot;&gt;Note :&lt;/span&gt; to tag the project and create a new project version, go to Korvane main menu : &amp;quot;Actions &amp;gt;&amp;gt; Tag project state&amp;quot;.&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;&lt;span style=&quot; font-weight:600;&quot;&gt;Remarque :&lt;/span&gt; pour étiqueter le projet et en créer une nouvelle version, utilisez le menu principal de Korvane : &amp;quot;Actions &amp;gt;&amp;gt; Tag project state&amp;quot;.&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Build database schema evolution : 1 DDL SQL script file per project version</source>
        <translation>Générer l&apos;évolution du schéma : 1 fichier script SQL DDL par version du projet</translation>
    </message>
    <message>
        <source>Build full database schema + schema evolution</source>
        <translation>Générer le schéma complet de la base de données + l&apos;évolution du schéma</translation>
    </message>
    <message>
        <source>Mapping C++ type to database SQL type</source>
        <translation>Correspondance des types C++ avec les types SQL de la base de données</translation>
    </message>
    <message>
        <source>Restore default type mapping</source>
        <translation>Restaurer la correspondance par défaut</translation>
    </message>
    <message>
        <source>Custom script (javascript file) to change the default behaviour of the export process</source>
        <translation>Script personnalisé (fichier javascript) pour modifier le comportement par défaut de l&apos;export</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;&lt;span style=&quot; font-weight:600;&quot;&gt;Note :&lt;/span&gt; to change the default behaviour of the export process, you can write your own custom javascript file.&lt;br/&gt;There is a custom javascript example file in the &lt;span style=&quot; font-style:italic;&quot;&gt;./samples/&lt;/span&gt; directory of Korvane package (&lt;span style=&quot; font-style:italic;&quot;&gt;./samples/custom_script.js&lt;/span&gt;).&lt;br/&gt;You can open this example file to have more details about how to implement your own custom javascript file.&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;&lt;span style=&quot; font-weight:600;&quot;&gt;Remarque :&lt;/span&gt; pour modifier le comportement par défaut de l&apos;export, vous pouvez écrire votre propre fichier javascript.&lt;br/&gt;Un exemple se trouve dans le répertoire &lt;span style=&quot; font-style:italic;&quot;&gt;./samples/&lt;/span&gt; de Korvane (&lt;span style=&quot; font-style:italic;&quot;&gt;./samples/custom_script.js&lt;/span&gt;).&lt;br/&gt;Ouvrez ce fichier d&apos;exemple pour savoir comment écrire votre propre fichier javascript.&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Custom script file :</source>
        <translation>Fichier de script personnalisé :</translation>
    </message>
    <message>
        <source>Custom script file</source>
        <translation>Fichier de script personnalisé</translation>
    </message>
    <message>
        <source>Choose the custom script file</source>
        <translation>Choisir le fichier de script personnalisé</translation>
    </message>
    <message>
        <source>Debug custom javascript file</source>
        <translation>Déboguer le fichier javascript personnalisé</translation>
    </message>
    <message>
        <source>Documentation - Manual - User guide</source>
        <translation>Documentation - Manuel - Guide de l&apos;utilisateur</translation>
    </message>
    <message>
        <source>Ok</source>
        <translation>Ok</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
</context>
</TS>
