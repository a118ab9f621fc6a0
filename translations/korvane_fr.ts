<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr" sourcelanguage="en">
<context>
    <name>app::change_tree</name>
    <message>
        <source>Changes</source>
        <translation>Changements</translation>
    </message>
</context>
<context>
    <name>app::changes_controller</name>
    <message>
        <source>&apos;%1&apos; has no version yet, so there is nothing to compare it with.
&quot;Actions &gt; Tag project state…&quot; makes one.</source>
        <translation>«&#xa0;%1&#xa0;» n&apos;a pas encore de version à laquelle le comparer.
«&#xa0;Actions &gt; Étiqueter l&apos;état du projet…&#xa0;» en crée une.</translation>
    </message>
    <message>
        <source>Without the custom script of the project, which was not allowed to run yet.</source>
        <translation>Sans le script personnalisé du projet, qui n&apos;a pas encore été autorisé à s&apos;exécuter.</translation>
    </message>
    <message>
        <source>A step backwards is not judged.</source>
        <translation>Un pas en arrière n&apos;est pas jugé.</translation>
    </message>
    <message>
        <source>no version yet to compare it with</source>
        <translation>pas encore de version à laquelle le comparer</translation>
    </message>
    <message>
        <source>changes from %1 to %2</source>
        <translation>changements de %1 à %2</translation>
    </message>
</context>
<context>
    <name>app::changes_panel</name>
    <message>
        <source>F&amp;rom:</source>
        <translation>&amp;De&#xa0;:</translation>
    </message>
    <message>
        <source>T&amp;o:</source>
        <translation>&amp;À&#xa0;:</translation>
    </message>
    <message>
        <source>Data&amp;base:</source>
        <translation>&amp;Base de données&#xa0;:</translation>
    </message>
    <message>
        <source>now</source>
        <translation>maintenant</translation>
    </message>
</context>
<context>
    <name>app::changes_view</name>
    <message>
        <source>No changes</source>
        <translation>Aucun changement</translation>
    </message>
    <message>
        <source>1 change</source>
        <translation>1 changement</translation>
    </message>
    <message>
        <source>%1 changes</source>
        <translation>%1 changements</translation>
    </message>
    <message>
        <source>no statement</source>
        <translation>aucune instruction</translation>
    </message>
    <message>
        <source>1 statement</source>
        <translation>1 instruction</translation>
    </message>
    <message>
        <source>%1 statements</source>
        <translation>%1 instructions</translation>
    </message>
    <message>
        <source>Statements</source>
        <translation>Instructions</translation>
    </message>
</context>
<context>
    <name>app::check_controller</name>
    <message>
        <source> (accepted: %1)</source>
        <translation> (accepté&#xa0;: %1)</translation>
    </message>
    <message>
        <source>Korvane - Check</source>
        <translation>Korvane - Vérification</translation>
    </message>
    <message>
        <source>Check of &apos;%1&apos; with %2</source>
        <translation>Vérification de «&#xa0;%1&#xa0;» avec %2</translation>
    </message>
    <message>
        <source>The check failed: see the messages</source>
        <translation>La vérification a échoué&#xa0;: voir les messages</translation>
    </message>
    <message>
        <source>Findings about the scripts</source>
        <translation>Constatations sur les scripts</translation>
    </message>
</context>
<context>
    <name>app::database_controller</name>
    <message>
        <source>This changes the model of &apos;%1&apos; to that of %2. Settings and versions are kept.</source>
        <translation>Le modèle de «&#xa0;%1&#xa0;» devient celui de %2. Les paramètres et les versions sont conservés.</translation>
    </message>
    <message>
        <source>This makes the project &apos;%1&apos; of %2.</source>
        <translation>Le projet «&#xa0;%1&#xa0;» est créé à partir de %2.</translation>
    </message>
    <message>
        <source>Without a place in the model, or made otherwise by scripts: %1. The messages list them after the import.</source>
        <translation>Sans place dans le modèle, ou fait autrement par les scripts&#xa0;: %1. Les messages en donnent la liste après l&apos;import.</translation>
    </message>
    <message>
        <source>Import of %1</source>
        <translation>Import de %1</translation>
    </message>
    <message>
        <source>Project &apos;%1&apos; imported into %2 (entities: %3; without a place in the model: %4)</source>
        <translation>Projet «&#xa0;%1&#xa0;» importé dans %2 (entités&#xa0;: %3&#x202f;; sans place dans le modèle&#xa0;: %4)</translation>
    </message>
</context>
<context>
    <name>app::database_dialog</name>
    <message>
        <source>SQLite file</source>
        <translation>Fichier SQLite</translation>
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
        <translation>Script SQL pour SQLite</translation>
    </message>
    <message>
        <source>SQL script for PostgreSQL</source>
        <translation>Script SQL pour PostgreSQL</translation>
    </message>
    <message>
        <source>SQL script for MariaDB</source>
        <translation>Script SQL pour MariaDB</translation>
    </message>
    <message>
        <source>&amp;Browse…</source>
        <translation>Pa&amp;rcourir…</translation>
    </message>
    <message>
        <source>&amp;Connect</source>
        <translation>Se &amp;connecter</translation>
    </message>
    <message>
        <source>&amp;All tables</source>
        <translation>&amp;Toutes les tables</translation>
    </message>
    <message>
        <source>Tables that only &amp;link two others become many-to-many relationships</source>
        <translation>Les tables qui ne font que &amp;lier deux autres deviennent des relations n-m</translation>
    </message>
    <message>
        <source>&amp;Next…</source>
        <translation>&amp;Suivant…</translation>
    </message>
    <message>
        <source>Korvane - Import from database</source>
        <translation>Korvane - Import depuis une base de données</translation>
    </message>
    <message>
        <source>Reads which tables there are; the database stays as it is</source>
        <translation>Lit quelles tables il y a&#x202f;; la base de données reste comme elle est</translation>
    </message>
    <message>
        <source>&amp;Kind:</source>
        <translation>T&amp;ype&#xa0;:</translation>
    </message>
    <message>
        <source>&amp;File or URL:</source>
        <translation>&amp;Fichier ou URL&#xa0;:</translation>
    </message>
    <message>
        <source>&amp;Password:</source>
        <translation>&amp;Mot de passe&#xa0;:</translation>
    </message>
    <message>
        <source>&amp;Schema:</source>
        <translation>Sc&amp;héma&#xa0;:</translation>
    </message>
    <message>
        <source>Tables of the database</source>
        <translation>Tables de la base de données</translation>
    </message>
    <message>
        <source>%1 can be read: 1 table</source>
        <translation>%1 peut être lu&#xa0;: 1 table</translation>
    </message>
    <message>
        <source>%1 can be read: %2 tables</source>
        <translation>%1 peut être lu&#xa0;: %2 tables</translation>
    </message>
</context>
<context>
    <name>app::diagram_contents</name>
    <message>
        <source>… %1 more</source>
        <translation>… %1 autres</translation>
    </message>
    <message>
        <source>Table: %1</source>
        <translation>Table&#xa0;: %1</translation>
    </message>
    <message>
        <source>Id: %1, version: %2</source>
        <translation>Id&#xa0;: %1, version&#xa0;: %2</translation>
    </message>
    <message>
        <source>Properties: %1</source>
        <translation>Propriétés&#xa0;: %1</translation>
    </message>
    <message>
        <source>The target of %1 is missing</source>
        <translation>La cible de %1 est manquante</translation>
    </message>
    <message>
        <source>Neighbours that are not shown: %1</source>
        <translation>Entités voisines non affichées&#xa0;: %1</translation>
    </message>
    <message>
        <source>none or one</source>
        <translation>zéro ou une</translation>
    </message>
    <message>
        <source>exactly one</source>
        <translation>exactement une</translation>
    </message>
    <message>
        <source>any number</source>
        <translation>un nombre quelconque</translation>
    </message>
    <message>
        <source>%1: %2 for each %3</source>
        <translation>%1&#xa0;: %2 pour chaque %3</translation>
    </message>
    <message>
        <source>Inverse: %1.%2</source>
        <translation>Inverse&#xa0;: %1.%2</translation>
    </message>
    <message>
        <source>Link table: %1</source>
        <translation>Table de liaison&#xa0;: %1</translation>
    </message>
    <message>
        <source>. No relationships are shown.</source>
        <translation>. Aucune relation n&apos;est affichée.</translation>
    </message>
    <message>
        <source>. Connected with %1.</source>
        <translation>. Reliée à %1.</translation>
    </message>
    <message>
        <source>Missing targets: %1</source>
        <translation>Cibles manquantes&#xa0;: %1</translation>
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
        <translation>en montrer moins</translation>
    </message>
    <message>
        <source>primary key</source>
        <translation>clé primaire</translation>
    </message>
    <message>
        <source>foreign key</source>
        <translation>clé étrangère</translation>
    </message>
    <message>
        <source>not null</source>
        <translation>non NULL</translation>
    </message>
    <message>
        <source>unique</source>
        <translation>unique</translation>
    </message>
    <message>
        <source>indexed</source>
        <translation>indexé</translation>
    </message>
    <message>
        <source>was %1</source>
        <translation>était %1</translation>
    </message>
    <message>
        <source> Shown: %1.</source>
        <translation> Affiché&#xa0;: %1.</translation>
    </message>
    <message>
        <source>added</source>
        <translation>ajouté</translation>
    </message>
    <message>
        <source>dropped</source>
        <translation>supprimé</translation>
    </message>
    <message>
        <source>changed</source>
        <translation>modifié</translation>
    </message>
    <message>
        <source>renamed</source>
        <translation>renommé</translation>
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
        <translation>Le diagramme n&apos;a pas été écrit dans %1&#xa0;: %2</translation>
    </message>
    <message>
        <source>it cannot be drawn</source>
        <translation>impossible de le dessiner</translation>
    </message>
    <message>
        <source>there is not enough memory for the picture</source>
        <translation>mémoire insuffisante pour l&apos;image</translation>
    </message>
    <message>
        <source>The diagram is large: the picture was made smaller, %1 × %2 pixels</source>
        <translation>Le diagramme est grand&#xa0;: l&apos;image a été réduite à %1 × %2 pixels</translation>
    </message>
</context>
<context>
    <name>app::diagram_layout</name>
    <message>
        <source>Graphviz (dot) took longer than %1 s</source>
        <translation>Graphviz (dot) a mis plus de %1 s</translation>
    </message>
    <message>
        <source>Graphviz (dot) could not be started (%1)</source>
        <translation>Graphviz (dot) n&apos;a pas pu être démarré (%1)</translation>
    </message>
    <message>
        <source>Graphviz (dot) crashed</source>
        <translation>Graphviz (dot) s&apos;est arrêté brutalement</translation>
    </message>
    <message>
        <source>Graphviz (dot) failed with status %1</source>
        <translation>Graphviz (dot) a échoué avec le code %1</translation>
    </message>
    <message>
        <source>Graphviz (dot) failed with status %1 (%2)</source>
        <translation>Graphviz (dot) a échoué avec le code %1 (%2)</translation>
    </message>
    <message>
        <source>Graphviz (dot) is not installed; install Graphviz for a layout</source>
        <translation>Graphviz (dot) n&apos;est pas installé&#x202f;; installez Graphviz pour une disposition</translation>
    </message>
    <message>
        <source>Graphviz (dot) returned too much output</source>
        <translation>Graphviz (dot) a produit une sortie trop volumineuse</translation>
    </message>
    <message>
        <source>Graphviz (dot) returned a layout that could not be read</source>
        <translation>Graphviz (dot) a produit une disposition illisible</translation>
    </message>
    <message>
        <source>%1. The entities are arranged in a grid</source>
        <translation>%1. Les entités sont disposées en grille</translation>
    </message>
</context>
<context>
    <name>app::diagram_legend</name>
    <message>
        <source>primary key</source>
        <translation>clé primaire</translation>
    </message>
    <message>
        <source>foreign key</source>
        <translation>clé étrangère</translation>
    </message>
    <message>
        <source>not null</source>
        <translation>non NULL</translation>
    </message>
    <message>
        <source>unique</source>
        <translation>unique</translation>
    </message>
    <message>
        <source>index</source>
        <translation>index</translation>
    </message>
    <message>
        <source>relationship without a column</source>
        <translation>relation sans colonne</translation>
    </message>
</context>
<context>
    <name>app::diagram_panel</name>
    <message>
        <source>Laying out…</source>
        <translation>Disposition en cours…</translation>
    </message>
    <message>
        <source>No project is open.</source>
        <translation>Aucun projet n&apos;est ouvert.</translation>
    </message>
    <message>
        <source>The project has no entities.</source>
        <translation>Le projet n&apos;a aucune entité.</translation>
    </message>
    <message>
        <source>Select an entity in the tree to see it and its neighbours here.</source>
        <translation>Sélectionnez une entité dans l&apos;arborescence pour la voir ici avec ses voisines.</translation>
    </message>
    <message>
        <source>1 entity</source>
        <translation>1 entité</translation>
    </message>
    <message>
        <source>All %1 entities</source>
        <translation>Toutes les entités (%1)</translation>
    </message>
    <message>
        <source>%1 of %2 entities</source>
        <translation>%1 sur %2 entités</translation>
    </message>
    <message>
        <source>%1 of %2 entities: the neighbours of %3</source>
        <translation>%1 sur %2 entités&#xa0;: les voisines de %3</translation>
    </message>
    <message>
        <source>%1 of %2 entities: the neighbours of %3 up to distance %4</source>
        <translation>%1 sur %2 entités&#xa0;: les voisines de %3 jusqu&apos;à la distance %4</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%1&#xa0;%</translation>
    </message>
    <message>
        <source>There is no diagram to save.</source>
        <translation>Il n&apos;y a aucun diagramme à enregistrer.</translation>
    </message>
    <message>
        <source>Diagram of the project</source>
        <translation>Diagramme du projet</translation>
    </message>
    <message>
        <source>Zoom &amp;in</source>
        <translation>Zoom &amp;avant</translation>
    </message>
    <message>
        <source>Zoom &amp;out</source>
        <translation>Zoom arr&amp;ière</translation>
    </message>
    <message>
        <source>&amp;Fit</source>
        <translation>A&amp;juster</translation>
    </message>
    <message>
        <source>Show the whole diagram</source>
        <translation>Afficher tout le diagramme</translation>
    </message>
    <message>
        <source>&amp;Actual size (100 %)</source>
        <translation>&amp;Taille réelle (100&#xa0;%)</translation>
    </message>
    <message>
        <source>&amp;Save diagram…</source>
        <translation>Enregistrer le dia&amp;gramme…</translation>
    </message>
    <message>
        <source>Save the diagram as an SVG or PNG file</source>
        <translation>Enregistrer le diagramme dans un fichier SVG ou PNG</translation>
    </message>
    <message>
        <source>&amp;Distance</source>
        <translation>Dista&amp;nce</translation>
    </message>
    <message>
        <source>Distance of the neighbours that are shown</source>
        <translation>Distance des voisines affichées</translation>
    </message>
    <message>
        <source>Diagram</source>
        <translation>Diagramme</translation>
    </message>
    <message>
        <source>Distance:</source>
        <translation>Distance&#xa0;:</translation>
    </message>
    <message>
        <source>What the diagram shows</source>
        <translation>Contenu du diagramme</translation>
    </message>
    <message>
        <source>Note on the diagram</source>
        <translation>Remarque sur le diagramme</translation>
    </message>
    <message>
        <source>Zoom</source>
        <translation>Zoom</translation>
    </message>
    <message>
        <source>Save diagram</source>
        <translation>Enregistrer le diagramme</translation>
    </message>
    <message>
        <source>PNG picture (*.png)</source>
        <translation>Image PNG (*.png)</translation>
    </message>
    <message>
        <source>SVG picture (*.svg)</source>
        <translation>Image SVG (*.svg)</translation>
    </message>
    <message>
        <source>Korvane - Diagram</source>
        <translation>Korvane - Diagramme</translation>
    </message>
    <message>
        <source>Saved as %1</source>
        <translation>Enregistré sous %1</translation>
    </message>
    <message>
        <source>; not shown: %1</source>
        <translation>&#x202f;; non affichées&#xa0;: %1</translation>
    </message>
    <message>
        <source>Enlarge the diagram</source>
        <translation>Agrandir le diagramme</translation>
    </message>
    <message>
        <source>Shrink the diagram</source>
        <translation>Réduire le diagramme</translation>
    </message>
    <message>
        <source>Show the diagram at 100 %</source>
        <translation>Afficher le diagramme à 100&#xa0;%</translation>
    </message>
    <message>
        <source>How many relationships away from the selected entity to show (large projects only)</source>
        <translation>Jusqu&apos;à combien de relations de l&apos;entité sélectionnée afficher (grands projets seulement)</translation>
    </message>
    <message>
        <source>%1 already exists. Replace it?</source>
        <translation>%1 existe déjà. Voulez-vous le remplacer&#x202f;?</translation>
    </message>
    <message>
        <source>Legend: %1</source>
        <translation>Légende&#xa0;: %1</translation>
    </message>
    <message>
        <source>Mar&amp;k changes</source>
        <translation>Mar&amp;quer les changements</translation>
    </message>
    <message>
        <source>Mark what changed between the versions that are chosen under Changes</source>
        <translation>Marquer ce qui a changé entre les versions choisies sous Changements</translation>
    </message>
    <message>
        <source>Legend</source>
        <translation>Légende</translation>
    </message>
</context>
<context>
    <name>app::diagram_view</name>
    <message>
        <source>No entity is selected.</source>
        <translation>Aucune entité n&apos;est sélectionnée.</translation>
    </message>
    <message>
        <source>Selected: %1</source>
        <translation>Sélectionnée&#xa0;: %1</translation>
    </message>
</context>
<context>
    <name>app::export_controller</name>
    <message>
        <source>Korvane - Settings</source>
        <translation>Korvane - Paramètres</translation>
    </message>
    <message>
        <source>Korvane - Export</source>
        <translation>Korvane - Export</translation>
    </message>
    <message>
        <source>Export of &apos;%1&apos; with %2</source>
        <translation>Export de «&#xa0;%1&#xa0;» avec %2</translation>
    </message>
    <message>
        <source>Korvane - Custom script</source>
        <translation>Korvane - Script personnalisé</translation>
    </message>
    <message>
        <source>The project names a custom script, which runs with your rights:
%1

Do you want to run it? With No the export leaves it out.</source>
        <translation>Le projet désigne un script personnalisé, qui s&apos;exécute avec vos droits&#xa0;:
%1

Voulez-vous l&apos;exécuter&#x202f;? Avec Non, l&apos;export s&apos;en passe.</translation>
    </message>
    <message>
        <source>Nothing was written: evolution scripts need a tagged version. Use &quot;Actions &gt; Tag project state…&quot; first</source>
        <translation>Rien n&apos;a été écrit&#xa0;: les scripts d&apos;évolution demandent une version étiquetée. Utilisez d&apos;abord «&#xa0;Actions &gt; Étiqueter l&apos;état du projet…&#xa0;»</translation>
    </message>
    <message>
        <source>Nothing was written</source>
        <translation>Rien n&apos;a été écrit</translation>
    </message>
    <message>
        <source>The export failed</source>
        <translation>L&apos;export a échoué</translation>
    </message>
    <message>
        <source>The export failed: see the messages</source>
        <translation>L&apos;export a échoué&#xa0;: voir les messages</translation>
    </message>
    <message>
        <source>The export was cancelled; nothing was written</source>
        <translation>L&apos;export a été annulé&#x202f;; rien n&apos;a été écrit</translation>
    </message>
    <message>
        <source>1 script written to %1</source>
        <translation>1 script écrit dans %1</translation>
    </message>
    <message>
        <source>%1 scripts written to %2</source>
        <translation>%1 scripts écrits dans %2</translation>
    </message>
    <message>
        <source>The export was cancelled; 1 script is complete</source>
        <translation>L&apos;export a été annulé&#x202f;; 1 script est complet</translation>
    </message>
    <message>
        <source>The export was cancelled; %1 scripts are complete</source>
        <translation>L&apos;export a été annulé&#x202f;; %1 scripts sont complets</translation>
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
        <translation>%1 %2&#xa0;: %3</translation>
    </message>
    <message>
        <source>Hold Shift to start the script debugger.</source>
        <translation>Maintenez la touche Maj enfoncée pour démarrer le débogueur de script.</translation>
    </message>
    <message>
        <source>No plugin was found</source>
        <translation>Aucun plugin trouvé</translation>
    </message>
    <message>
        <source>&amp;Check</source>
        <translation>&amp;Vérifier</translation>
    </message>
    <message>
        <source>Foretell what the database will do with the scripts; nothing is written</source>
        <translation>Prédire ce que la base de données fera des scripts&#x202f;; rien n&apos;est écrit</translation>
    </message>
    <message>
        <source>&amp;Settings…</source>
        <translation>&amp;Paramètres…</translation>
    </message>
    <message>
        <source>Edit the settings of the export that are stored in the project</source>
        <translation>Modifier les paramètres de l&apos;export enregistrés dans le projet</translation>
    </message>
</context>
<context>
    <name>app::export_run</name>
    <message>
        <source>The export failed; the plug-in gave no reason</source>
        <translation>L&apos;export a échoué&#x202f;; le plugin n&apos;a pas donné de raison</translation>
    </message>
</context>
<context>
    <name>app::find_bar</name>
    <message>
        <source>Match case</source>
        <translation>Respecter la casse</translation>
    </message>
    <message>
        <source>Text to find</source>
        <translation>Texte à rechercher</translation>
    </message>
    <message>
        <source>Matches</source>
        <translation>Occurrences</translation>
    </message>
    <message>
        <source>Find:</source>
        <translation>Rechercher&#xa0;:</translation>
    </message>
    <message>
        <source>Previous</source>
        <translation>Précédente</translation>
    </message>
    <message>
        <source>Previous match (Shift+F3)</source>
        <translation>Occurrence précédente (Maj+F3)</translation>
    </message>
    <message>
        <source>Next</source>
        <translation>Suivante</translation>
    </message>
    <message>
        <source>Next match (F3)</source>
        <translation>Occurrence suivante (F3)</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Fermer</translation>
    </message>
    <message>
        <source>Close the search (Escape)</source>
        <translation>Fermer la recherche (Échap)</translation>
    </message>
    <message>
        <source>No match</source>
        <translation>Aucune occurrence</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <comment>matches</comment>
        <translation>%1 sur %2</translation>
    </message>
    <message>
        <source>1 match</source>
        <translation>1 occurrence</translation>
    </message>
    <message>
        <source>%1 matches</source>
        <translation>%1 occurrences</translation>
    </message>
</context>
<context>
    <name>app::help_commands</name>
    <message>
        <source>Korvane - Manual</source>
        <translation>Korvane - Manuel</translation>
    </message>
    <message>
        <source>The manual could not be opened. Open this file in a browser: %1</source>
        <translation>Le manuel n&apos;a pas pu être ouvert. Ouvrez ce fichier dans un navigateur&#xa0;: %1</translation>
    </message>
    <message>
        <source>Korvane - Scripts</source>
        <translation>Korvane - Scripts</translation>
    </message>
    <message>
        <source>The folder could not be opened: %1</source>
        <translation>Le dossier n&apos;a pas pu être ouvert&#xa0;: %1</translation>
    </message>
    <message>
        <source>&lt;h3&gt;Korvane %1&lt;/h3&gt;&lt;p&gt;Trustworthy migration scripts from a class model.&lt;/p&gt;&lt;p&gt;Runs on Qt %2. MIT license.&lt;/p&gt;</source>
        <translation>&lt;h3&gt;Korvane %1&lt;/h3&gt;&lt;p&gt;Des scripts de migration fiables à partir d&apos;un modèle de classes.&lt;/p&gt;&lt;p&gt;Fonctionne avec Qt %2. Licence MIT.&lt;/p&gt;</translation>
    </message>
    <message>
        <source>Korvane - About</source>
        <translation>Korvane - À propos</translation>
    </message>
</context>
<context>
    <name>app::import_dialog</name>
    <message>
        <source>Import</source>
        <translation>Importer</translation>
    </message>
    <message>
        <source>What there is to know</source>
        <translation>À savoir</translation>
    </message>
</context>
<context>
    <name>app::message_list</name>
    <message>
        <source>Error: %1</source>
        <translation>Erreur&#xa0;: %1</translation>
    </message>
    <message>
        <source>Warning: %1</source>
        <translation>Avertissement&#xa0;: %1</translation>
    </message>
    <message>
        <source>%1 older lines were dropped</source>
        <translation>%1 lignes plus anciennes ont été supprimées</translation>
    </message>
    <message>
        <source>Note: %1</source>
        <translation>Remarque&#xa0;: %1</translation>
    </message>
    <message>
        <source>Accepted: %1</source>
        <translation>Accepté&#xa0;: %1</translation>
    </message>
</context>
<context>
    <name>app::message_panel</name>
    <message>
        <source>No messages</source>
        <translation>Aucun message</translation>
    </message>
    <message>
        <source>1 message</source>
        <translation>1 message</translation>
    </message>
    <message>
        <source>%1 messages</source>
        <translation>%1 messages</translation>
    </message>
    <message>
        <source>no errors</source>
        <translation>aucune erreur</translation>
    </message>
    <message>
        <source>1 error</source>
        <translation>1 erreur</translation>
    </message>
    <message>
        <source>%1 errors</source>
        <translation>%1 erreurs</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <comment>messages, errors</comment>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>Messages</source>
        <translation>Messages</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Progression</translation>
    </message>
    <message>
        <source>Errors only</source>
        <translation>Erreurs seules</translation>
    </message>
    <message>
        <source>Show errors only</source>
        <translation>N&apos;afficher que les erreurs</translation>
    </message>
    <message>
        <source>Copy all</source>
        <translation>Tout copier</translation>
    </message>
    <message>
        <source>Copy all messages shown</source>
        <translation>Copier tous les messages affichés</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Vider</translation>
    </message>
    <message>
        <source>Clear the messages</source>
        <translation>Vider la liste des messages</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Copier</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Terminé</translation>
    </message>
    <message>
        <source>Failed</source>
        <translation>Échec</translation>
    </message>
    <message>
        <source>No findings</source>
        <translation>Aucune constatation</translation>
    </message>
    <message>
        <source>1 warning</source>
        <translation>1 avertissement</translation>
    </message>
    <message>
        <source>1 note</source>
        <translation>1 remarque</translation>
    </message>
    <message>
        <source>%1 accepted</source>
        <translation>%1 acceptées</translation>
    </message>
    <message>
        <source>%1 warnings</source>
        <translation>%1 avertissements</translation>
    </message>
    <message>
        <source>%1 notes</source>
        <translation>%1 remarques</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>Cancel the export</source>
        <translation>Annuler l&apos;export</translation>
    </message>
    <message>
        <source>End the export before its next statement</source>
        <translation>Terminer l&apos;export avant sa prochaine instruction</translation>
    </message>
</context>
<context>
    <name>app::new_project</name>
    <message>
        <source>%1: cannot be written (%2)</source>
        <translation>%1&#xa0;: ne peut pas être écrit (%2)</translation>
    </message>
    <message>
        <source>%1: cannot be copied to %2 (%3)</source>
        <translation>%1&#xa0;: ne peut pas être copié vers %2 (%3)</translation>
    </message>
</context>
<context>
    <name>app::plugin_choice</name>
    <message>
        <source>%1: not used, %2 is a plugin of the same name</source>
        <translation>%1&#xa0;: non utilisé, %2 est un plugin du même nom</translation>
    </message>
</context>
<context>
    <name>app::project_commands</name>
    <message>
        <source>Korvane - Open</source>
        <translation>Korvane - Ouvrir</translation>
    </message>
    <message>
        <source>%1 opened</source>
        <translation>Projet ouvert&#xa0;: %1</translation>
    </message>
    <message>
        <source>Projects (*.korv)</source>
        <translation>Projets (*.korv)</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>Tous les fichiers (*)</translation>
    </message>
    <message>
        <source>Korvane - Import model</source>
        <translation>Korvane - Importer un modèle</translation>
    </message>
    <message>
        <source>Models in text form (*.json)</source>
        <translation>Modèles sous forme de texte (*.json)</translation>
    </message>
    <message>
        <source>Korvane - Import %1 into the project file</source>
        <translation>Korvane - Importer %1 dans le fichier de projet</translation>
    </message>
    <message>
        <source>&apos;%1&apos; already exists.
Replace its model with the one from &apos;%2&apos;? Settings and versions are kept.</source>
        <translation>«&#xa0;%1&#xa0;» existe déjà.
Remplacer son modèle par celui de «&#xa0;%2&#xa0;»&#x202f;? Les paramètres et les versions sont conservés.</translation>
    </message>
    <message>
        <source>Import of %1</source>
        <translation>Import de %1</translation>
    </message>
    <message>
        <source>Project &apos;%1&apos; imported into %2 (entities: %3)</source>
        <translation>Projet «&#xa0;%1&#xa0;» importé dans %2 (entités&#xa0;: %3)</translation>
    </message>
    <message>
        <source>Korvane - Save model as text</source>
        <translation>Korvane - Enregistrer le modèle en texte</translation>
    </message>
    <message>
        <source>%1 is a project file and was not overwritten. Choose a name that ends in .json</source>
        <translation>%1 est un fichier de projet et n&apos;a pas été remplacé. Choisissez un nom qui se termine par .json</translation>
    </message>
    <message>
        <source>%1 written</source>
        <translation>Fichier écrit&#xa0;: %1</translation>
    </message>
    <message>
        <source>Korvane - Reload</source>
        <translation>Korvane - Recharger</translation>
    </message>
    <message>
        <source>%1 is up to date</source>
        <translation>%1 est à jour</translation>
    </message>
    <message>
        <source>Version %1 of %2 tagged</source>
        <translation>Version %1 de %2 étiquetée</translation>
    </message>
    <message>
        <source>Version %1 of %2 tagged; the model has not changed since version %3</source>
        <translation>Version %1 de %2 étiquetée&#x202f;; le modèle n&apos;a pas changé depuis la version %3</translation>
    </message>
    <message>
        <source>Korvane - New project</source>
        <translation>Korvane - Nouveau projet</translation>
    </message>
    <message>
        <source>Korvane - Sample project</source>
        <translation>Korvane - Projet d&apos;exemple</translation>
    </message>
    <message>
        <source>%1 is there already; choose another name</source>
        <translation>%1 existe déjà&#x202f;; choisissez un autre nom</translation>
    </message>
    <message>
        <source>New project</source>
        <translation>Nouveau projet</translation>
    </message>
    <message>
        <source>%1 is the model as text: edit it, then import it again</source>
        <translation>%1 est le modèle sous forme de texte&#xa0;: modifiez-le, puis importez-le de nouveau</translation>
    </message>
</context>
<context>
    <name>app::project_tree</name>
    <message>
        <source>Model</source>
        <translation>Modèle</translation>
    </message>
    <message>
        <source>Filter</source>
        <translation>Filtre</translation>
    </message>
    <message>
        <source>Entities, properties and relationships</source>
        <translation>Entités, propriétés et relations</translation>
    </message>
    <message>
        <source>No project is open</source>
        <translation>Aucun projet n&apos;est ouvert</translation>
    </message>
    <message>
        <source>The project has no entities</source>
        <translation>Le projet n&apos;a aucune entité</translation>
    </message>
    <message>
        <source>Nothing matches &apos;%1&apos;</source>
        <translation>Rien ne correspond à «&#xa0;%1&#xa0;»</translation>
    </message>
    <message>
        <source>%1 of 1 entity</source>
        <translation>%1 sur 1 entité</translation>
    </message>
    <message>
        <source>%1 of %2 entities</source>
        <translation>%1 sur %2 entités</translation>
    </message>
    <message>
        <source>1 entity</source>
        <translation>1 entité</translation>
    </message>
    <message>
        <source>%1 entities</source>
        <translation>%1 entités</translation>
    </message>
    <message>
        <source>Show only what has all of these words in its name, type, values, table or columns, or in those of its entity</source>
        <translation>Montrer seulement ce qui a tous ces mots dans son nom, son type, ses valeurs, sa table ou ses colonnes, ou dans ceux de son entité</translation>
    </message>
</context>
<context>
    <name>app::project_tree_text</name>
    <message>
        <source>Name</source>
        <translation>Nom</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Type</translation>
    </message>
    <message>
        <source>In the database</source>
        <translation>Dans la base</translation>
    </message>
    <message>
        <source>%1, inverse of %2</source>
        <translation>%1, inverse de %2</translation>
    </message>
    <message>
        <source>link table %1</source>
        <translation>table de liaison %1</translation>
    </message>
    <message>
        <source>Table: %1</source>
        <translation>Table&#xa0;: %1</translation>
    </message>
    <message>
        <source>Id: %1</source>
        <translation>Id&#xa0;: %1</translation>
    </message>
    <message>
        <source>Version: %1</source>
        <translation>Version&#xa0;: %1</translation>
    </message>
    <message>
        <source>Soft-delete column: %1</source>
        <translation>Colonne de suppression logique&#xa0;: %1</translation>
    </message>
    <message>
        <source>Type: %1</source>
        <translation>Type&#xa0;: %1</translation>
    </message>
    <message>
        <source>Transient: it is not stored in the database</source>
        <translation>Transitoire&#xa0;: n&apos;est pas stockée dans la base de données</translation>
    </message>
    <message>
        <source>In the database: %1</source>
        <translation>Dans la base&#xa0;: %1</translation>
    </message>
    <message>
        <source>In the database: no column</source>
        <translation>Dans la base&#xa0;: aucune colonne</translation>
    </message>
    <message>
        <source>SQL type: %1</source>
        <translation>Type SQL&#xa0;: %1</translation>
    </message>
    <message>
        <source>Relationship: %1</source>
        <translation>Relation&#xa0;: %1</translation>
    </message>
    <message>
        <source>Inverse of: %1</source>
        <translation>Inverse de&#xa0;: %1</translation>
    </message>
    <message>
        <source>Link table: %1</source>
        <translation>Table de liaison&#xa0;: %1</translation>
    </message>
    <message>
        <source>entity %1</source>
        <translation>entité %1</translation>
    </message>
    <message>
        <source>%1 to %2</source>
        <translation>%1 vers %2</translation>
    </message>
    <message>
        <source>relationship to %1</source>
        <translation>relation vers %1</translation>
    </message>
    <message>
        <source>missing entity %1</source>
        <translation>entité manquante %1</translation>
    </message>
    <message>
        <source>one-to-one</source>
        <translation>1-1</translation>
    </message>
    <message>
        <source>one-to-many</source>
        <translation>1-n</translation>
    </message>
    <message>
        <source>many-to-one</source>
        <translation>n-1</translation>
    </message>
    <message>
        <source>many-to-many</source>
        <translation>n-m</translation>
    </message>
    <message>
        <source>(no type)</source>
        <translation>(sans type)</translation>
    </message>
    <message>
        <source>(transient)</source>
        <translation>(transitoire)</translation>
    </message>
    <message>
        <source>(no column)</source>
        <translation>(sans colonne)</translation>
    </message>
    <message>
        <source>unique</source>
        <translation>unique</translation>
    </message>
    <message>
        <source>indexed</source>
        <translation>indexée</translation>
    </message>
    <message>
        <source>not null</source>
        <translation>NOT NULL</translation>
    </message>
    <message>
        <source>transient</source>
        <translation>transitoire</translation>
    </message>
    <message>
        <source>Primary key: %1 (%2)</source>
        <translation>Clé primaire&#xa0;: %1 (%2)</translation>
    </message>
    <message>
        <source>Primary key: none</source>
        <translation>Clé primaire&#xa0;: aucune</translation>
    </message>
    <message>
        <source>primary key</source>
        <translation>clé primaire</translation>
    </message>
</context>
<context>
    <name>app::project_tree_view</name>
    <message>
        <source>&amp;Copy name</source>
        <translation>&amp;Copier le nom</translation>
    </message>
    <message>
        <source>&amp;Go to target</source>
        <translation>&amp;Aller à la cible</translation>
    </message>
    <message>
        <source>&amp;Expand all</source>
        <translation>&amp;Tout développer</translation>
    </message>
    <message>
        <source>C&amp;ollapse all</source>
        <translation>Tout &amp;réduire</translation>
    </message>
</context>
<context>
    <name>app::project_window</name>
    <message>
        <source>Entities: %1   Properties: %2   Relationships: %3</source>
        <translation>Entités&#xa0;: %1   Propriétés&#xa0;: %2   Relations&#xa0;: %3</translation>
    </message>
    <message>
        <source>The window closes when the export has ended</source>
        <translation>La fenêtre se fermera à la fin de l&apos;export</translation>
    </message>
    <message>
        <source>Korvane - Project file</source>
        <translation>Korvane - Fichier de projet</translation>
    </message>
    <message>
        <source>Korvane</source>
        <translation>Korvane</translation>
    </message>
    <message>
        <source>%1, cannot be read any more</source>
        <translation>%1, désormais illisible</translation>
    </message>
    <message>
        <source>%1 (%2) - Korvane</source>
        <translation>%1 (%2) - Korvane</translation>
    </message>
    <message>
        <source>%1

The window still shows the project as last read. To keep its model, use &quot;File &gt; Save model as text…&quot;.</source>
        <translation>%1

La fenêtre montre toujours le projet tel qu&apos;il a été lu en dernier. Pour conserver son modèle, utilisez «&#xa0;Fichier &gt; Enregistrer le modèle en texte…&#xa0;».</translation>
    </message>
    <message>
        <source>Plugins</source>
        <translation>Plugins</translation>
    </message>
    <message>
        <source>Some plugins could not be loaded; see the messages</source>
        <translation>Certains plugins n&apos;ont pas pu être chargés&#x202f;; voir les messages</translation>
    </message>
    <message>
        <source>The script debugger holds the export</source>
        <translation>Le débogueur de scripts retient l&apos;export</translation>
    </message>
    <message>
        <source>&amp;Go to the debugger</source>
        <translation>Aller au déb&amp;ogueur</translation>
    </message>
</context>
<context>
    <name>app::project_work</name>
    <message>
        <source>standard input</source>
        <translation>entrée standard</translation>
    </message>
    <message>
        <source>cannot be read (%1)</source>
        <translation>ne peut pas être lu (%1)</translation>
    </message>
    <message>
        <source>is too large for the text form of a project</source>
        <translation>est trop volumineux pour un projet sous forme de texte</translation>
    </message>
    <message>
        <source>does not exist; check the name</source>
        <translation>n&apos;existe pas&#x202f;; vérifiez le nom</translation>
    </message>
    <message>
        <source>cannot be read (%1); check the name</source>
        <translation>ne peut pas être lu (%1)&#x202f;; vérifiez le nom</translation>
    </message>
    <message>
        <source>is %1, not a file with the text form of a project</source>
        <translation>est %1, pas un fichier contenant un projet sous forme de texte</translation>
    </message>
    <message>
        <source>%1: warning: %2</source>
        <translation>%1: avertissement&#xa0;: %2</translation>
    </message>
    <message>
        <source>cannot be written (%1)</source>
        <translation>ne peut pas être écrit (%1)</translation>
    </message>
</context>
<context>
    <name>app::recent_menu</name>
    <message>
        <source>Open &amp;recent</source>
        <translation>Ouvrir un projet &amp;récent</translation>
    </message>
    <message>
        <source>No recent projects</source>
        <translation>Aucun projet récent</translation>
    </message>
    <message>
        <source>&amp;Clear this list</source>
        <translation>&amp;Vider cette liste</translation>
    </message>
</context>
<context>
    <name>app::script_panel</name>
    <message>
        <source>Scripts</source>
        <translation>Scripts</translation>
    </message>
    <message>
        <source>The scripts of an export appear here</source>
        <translation>Les scripts d&apos;un export apparaissent ici</translation>
    </message>
    <message>
        <source>Script</source>
        <translation>Script</translation>
    </message>
    <message>
        <source>Wrap lines</source>
        <translation>Renvoi à la ligne</translation>
    </message>
    <message>
        <source>Wrap long lines</source>
        <translation>Renvoyer à la ligne les lignes longues</translation>
    </message>
    <message>
        <source>Script:</source>
        <translation>Script&#xa0;:</translation>
    </message>
    <message>
        <source>Copy script</source>
        <translation>Copier le script</translation>
    </message>
    <message>
        <source>Copy the whole script</source>
        <translation>Copier tout le script</translation>
    </message>
    <message>
        <source>Open folder</source>
        <translation>Ouvrir le dossier</translation>
    </message>
    <message>
        <source>Open the folder where the script is</source>
        <translation>Ouvrir le dossier où se trouve le script</translation>
    </message>
</context>
<context>
    <name>app::script_text</name>
    <message>
        <source>This statement takes values or a table away</source>
        <translation>Cette instruction supprime des valeurs ou une table</translation>
    </message>
</context>
<context>
    <name>app::script_view</name>
    <message>
        <source>Script %1</source>
        <translation>Script %1</translation>
    </message>
    <message>
        <source>File of the script</source>
        <translation>Fichier du script</translation>
    </message>
    <message>
        <source>The file is not there. It may have been moved or deleted.</source>
        <translation>Le fichier est introuvable. Il a peut-être été déplacé ou supprimé.</translation>
    </message>
    <message>
        <source>The file cannot be read: %1</source>
        <translation>Impossible de lire le fichier&#xa0;: %1</translation>
    </message>
    <message>
        <source>The script is very large. Only the first %1 of %2 are shown here.</source>
        <translation>Le script est très volumineux. Seul le début est affiché ici (%1 sur %2).</translation>
    </message>
    <message>
        <source>Lines of more than %1 characters are cut off here.</source>
        <translation>Les lignes de plus de %1 caractères sont coupées ici.</translation>
    </message>
    <message>
        <source>Only the first %1 characters of a line are coloured.</source>
        <translation>Seuls les %1 premiers caractères d&apos;une ligne sont colorés.</translation>
    </message>
    <message>
        <source>1 line</source>
        <translation>1 ligne</translation>
    </message>
    <message>
        <source>%1 lines</source>
        <translation>%1 lignes</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <comment>lines, size</comment>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>This is a folder or a special file, not a script.</source>
        <translation>Ceci est un dossier ou un fichier spécial, pas un script.</translation>
    </message>
    <message>
        <source>The file has bytes that are not UTF-8. They are shown as %1.</source>
        <translation>Le fichier contient des octets qui ne sont pas de l&apos;UTF-8. Ils sont affichés comme %1.</translation>
    </message>
</context>
<context>
    <name>app::tag_dialog</name>
    <message>
        <source>Korvane - Tag project state</source>
        <translation>Korvane - Étiqueter l&apos;état du projet</translation>
    </message>
    <message>
        <source>for example: first release</source>
        <translation>par exemple&#xa0;: première livraison</translation>
    </message>
    <message>
        <source>Tag</source>
        <translation>Étiqueter</translation>
    </message>
    <message>
        <source>Description</source>
        <translation>Description</translation>
    </message>
    <message>
        <source>&amp;Description:</source>
        <translation>&amp;Description&#xa0;:</translation>
    </message>
    <message>
        <source>This tags the current state of &apos;%1&apos;, its model and its settings, as version %2. Evolution scripts lead from one version to the next.</source>
        <translation>L&apos;état actuel de «&#xa0;%1&#xa0;», son modèle et ses paramètres, est étiqueté comme version %2. Les scripts d&apos;évolution mènent d&apos;une version à la suivante.</translation>
    </message>
</context>
<context>
    <name>app::versions_dialog</name>
    <message>
        <source>Korvane - Versions</source>
        <translation>Korvane - Versions</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>Version</translation>
    </message>
    <message>
        <source>Tagged</source>
        <translation>Étiquetée le</translation>
    </message>
    <message>
        <source>Versions of the project</source>
        <translation>Versions du projet</translation>
    </message>
    <message>
        <source>&apos;%1&apos; has no version yet. &quot;Actions &gt; Tag project state…&quot; makes one.</source>
        <translation>«&#xa0;%1&#xa0;» n&apos;a pas encore de version. «&#xa0;Actions &gt; Étiqueter l&apos;état du projet…&#xa0;» en crée une.</translation>
    </message>
    <message>
        <source>Versions of &apos;%1&apos;, the newest first:</source>
        <translation>Versions de «&#xa0;%1&#xa0;», de la plus récente à la plus ancienne&#xa0;:</translation>
    </message>
    <message>
        <source>Description</source>
        <translation>Description</translation>
    </message>
    <message>
        <source>&amp;Compare</source>
        <translation>&amp;Comparer</translation>
    </message>
    <message>
        <source>Shows what changed between two selected versions, or since the one that is selected</source>
        <translation>Montre ce qui a changé entre deux versions sélectionnées, ou depuis celle qui est sélectionnée</translation>
    </message>
</context>
<context>
    <name>app::welcome_page</name>
    <message>
        <source>Open a project…</source>
        <translation>Ouvrir un projet…</translation>
    </message>
    <message>
        <source>A project file (*.korv). You can drop one on this window as well.</source>
        <translation>Un fichier de projet (*.korv). Vous pouvez aussi en déposer un sur cette fenêtre.</translation>
    </message>
    <message>
        <source>Korvane</source>
        <translation>Korvane</translation>
    </message>
    <message>
        <source>Migration scripts from a class model</source>
        <translation>Scripts de migration à partir d&apos;un modèle de classes</translation>
    </message>
    <message>
        <source>Recent projects</source>
        <translation>Projets récents</translation>
    </message>
    <message>
        <source>Import a model…</source>
        <translation>Importer un modèle…</translation>
    </message>
    <message>
        <source>Creates a project from a model in text form (*.json), or replaces a project&apos;s model.</source>
        <translation>Crée un projet à partir d&apos;un modèle sous forme de texte (*.json), ou remplace le modèle d&apos;un projet.</translation>
    </message>
    <message>
        <source>Begin a new project…</source>
        <translation>Commencer un nouveau projet…</translation>
    </message>
    <message>
        <source>Writes a small model as text, to be edited and imported again, and the project of it.</source>
        <translation>Écrit un petit modèle sous forme de texte, à modifier et à importer de nouveau, et son projet.</translation>
    </message>
    <message>
        <source>Try the sample…</source>
        <translation>Essayer l&apos;exemple…</translation>
    </message>
    <message>
        <source>A copy of a project with three versions and changes since.</source>
        <translation>Une copie d&apos;un projet avec trois versions et des changements depuis.</translation>
    </message>
    <message>
        <source>Read the manual</source>
        <translation>Lire le manuel</translation>
    </message>
    <message>
        <source>Ten minutes from a model to migration scripts, in your browser.</source>
        <translation>En dix minutes du modèle aux scripts de migration, dans votre navigateur.</translation>
    </message>
    <message>
        <source>Import from a database…</source>
        <translation>Importer d&apos;une base de données…</translation>
    </message>
    <message>
        <source>The tables of a SQLite file, of a PostgreSQL, MariaDB or MySQL server, or of a script become the model.</source>
        <translation>Les tables d&apos;un fichier SQLite, d&apos;un serveur PostgreSQL, MariaDB ou MySQL ou d&apos;un script deviennent le modèle.</translation>
    </message>
</context>
<context>
    <name>app::whole_file</name>
    <message>
        <source>it exists, but is not a file</source>
        <translation>ce nom existe, mais ce n&apos;est pas un fichier</translation>
    </message>
</context>
<context>
    <name>app::window_menus</name>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Fichier</translation>
    </message>
    <message>
        <source>&amp;Open…</source>
        <translation>&amp;Ouvrir…</translation>
    </message>
    <message>
        <source>Open a project file</source>
        <translation>Ouvrir un fichier de projet</translation>
    </message>
    <message>
        <source>Re&amp;load</source>
        <translation>Re&amp;charger</translation>
    </message>
    <message>
        <source>Read the project file again</source>
        <translation>Relire le fichier de projet</translation>
    </message>
    <message>
        <source>&amp;Close project</source>
        <translation>&amp;Fermer le projet</translation>
    </message>
    <message>
        <source>Close the project</source>
        <translation>Fermer le projet</translation>
    </message>
    <message>
        <source>&amp;Import model…</source>
        <translation>&amp;Importer un modèle…</translation>
    </message>
    <message>
        <source>Create a project from a model in text form, or replace a project&apos;s model</source>
        <translation>Créer un projet à partir d&apos;un modèle sous forme de texte, ou remplacer le modèle d&apos;un projet</translation>
    </message>
    <message>
        <source>&amp;Save model as text…</source>
        <translation>&amp;Enregistrer le modèle en texte…</translation>
    </message>
    <message>
        <source>Write the model as text, to edit it or to keep it under version control</source>
        <translation>Écrire le modèle sous forme de texte, pour le modifier ou le placer sous gestion de versions</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Quitter</translation>
    </message>
    <message>
        <source>&amp;Actions</source>
        <translation>&amp;Actions</translation>
    </message>
    <message>
        <source>&amp;Tag project state…</source>
        <translation>É&amp;tiqueter l&apos;état du projet…</translation>
    </message>
    <message>
        <source>Tag the current state of the project as a new version</source>
        <translation>Étiqueter l&apos;état actuel du projet comme nouvelle version</translation>
    </message>
    <message>
        <source>&amp;Versions…</source>
        <translation>&amp;Versions…</translation>
    </message>
    <message>
        <source>Show the versions of the project</source>
        <translation>Afficher les versions du projet</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>Affic&amp;hage</translation>
    </message>
    <message>
        <source>Go to the &amp;model</source>
        <translation>Aller au &amp;modèle</translation>
    </message>
    <message>
        <source>Go to the dia&amp;gram</source>
        <translation>Aller au &amp;diagramme</translation>
    </message>
    <message>
        <source>Go to the scri&amp;pts</source>
        <translation>Aller aux &amp;scripts</translation>
    </message>
    <message>
        <source>Go to the m&amp;essages</source>
        <translation>Aller aux m&amp;essages</translation>
    </message>
    <message>
        <source>Fi&amp;lter the model</source>
        <translation>&amp;Filtrer le modèle</translation>
    </message>
    <message>
        <source>Find in the scrip&amp;t</source>
        <translation>&amp;Rechercher dans le script</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>Ai&amp;de</translation>
    </message>
    <message>
        <source>&amp;Manual</source>
        <translation>&amp;Manuel</translation>
    </message>
    <message>
        <source>Open the manual</source>
        <translation>Ouvrir le manuel</translation>
    </message>
    <message>
        <source>&amp;About Korvane</source>
        <translation>À &amp;propos de Korvane</translation>
    </message>
    <message>
        <source>Versions of the program and of its plugins</source>
        <translation>Versions du programme et de ses plugins</translation>
    </message>
    <message>
        <source>Tools</source>
        <translation>Barre d&apos;outils</translation>
    </message>
    <message>
        <source>Go to the &amp;changes</source>
        <translation>Aller aux &amp;changements</translation>
    </message>
    <message>
        <source>&amp;New project…</source>
        <translation>&amp;Nouveau projet…</translation>
    </message>
    <message>
        <source>Make a project of a small model, which is written as text beside it</source>
        <translation>Créer un projet à partir d&apos;un petit modèle, écrit à côté sous forme de texte</translation>
    </message>
    <message>
        <source>Import from &amp;database…</source>
        <translation>Importer d&apos;une &amp;base de données…</translation>
    </message>
    <message>
        <source>Make the model that of a database: a SQLite file, a server, or a script</source>
        <translation>Prendre pour modèle celui d&apos;une base de données&#xa0;: fichier SQLite, serveur ou script</translation>
    </message>
</context>
<context>
    <name>app::window_panes</name>
    <message>
        <source>Diagram</source>
        <translation>Diagramme</translation>
    </message>
    <message>
        <source>Scripts</source>
        <translation>Scripts</translation>
    </message>
    <message>
        <source>Model</source>
        <translation>Modèle</translation>
    </message>
    <message>
        <source>Messages</source>
        <translation>Messages</translation>
    </message>
    <message>
        <source>Diagram, changes and scripts</source>
        <translation>Diagramme, changements et scripts</translation>
    </message>
    <message>
        <source>Changes</source>
        <translation>Changements</translation>
    </message>
</context>
<context>
    <name>model</name>
    <message>
        <source>the version tagged at %1 is not there any more</source>
        <translation>la version étiquetée le %1 n&apos;existe plus</translation>
    </message>
</context>
<context>
    <name>os</name>
    <message>
        <source>a file</source>
        <translation>un fichier</translation>
    </message>
    <message>
        <source>a folder</source>
        <translation>un dossier</translation>
    </message>
    <message>
        <source>a symbolic link</source>
        <translation>un lien symbolique</translation>
    </message>
    <message>
        <source>a named pipe</source>
        <translation>un tube nommé</translation>
    </message>
    <message>
        <source>a socket</source>
        <translation>un socket</translation>
    </message>
    <message>
        <source>a device</source>
        <translation>un périphérique</translation>
    </message>
    <message>
        <source>Out of memory; the command was not completed. Close other programs or raise the limit of memory (ulimit -v), and try again</source>
        <translation>Mémoire insuffisante&#x202f;; la commande n&apos;a pas été menée à terme. Fermez d&apos;autres programmes ou relevez la limite de mémoire (ulimit -v), puis réessayez</translation>
    </message>
</context>
<context>
    <name>plugin</name>
    <message>
        <source>the plugin file does not exist</source>
        <translation>le fichier du plugin n&apos;existe pas</translation>
    </message>
    <message>
        <source>is not a plugin: it is not a file</source>
        <translation>n&apos;est pas un plugin&#xa0;: ce n&apos;est pas un fichier</translation>
    </message>
    <message>
        <source>is not a plugin: it is empty</source>
        <translation>n&apos;est pas un plugin&#xa0;: le fichier est vide</translation>
    </message>
    <message>
        <source>is not a plugin: %1</source>
        <translation>n&apos;est pas un plugin&#xa0;: %1</translation>
    </message>
    <message>
        <source>the plugin cannot be loaded: %1</source>
        <translation>le plugin ne peut pas être chargé&#xa0;: %1</translation>
    </message>
    <message>
        <source>the plugin was built for another interface</source>
        <translation>le plugin a été compilé pour une autre interface</translation>
    </message>
    <message>
        <source>the plugin was built for version %1 of the plugin interface, and this program has version %2; take the plugin that belongs to this program, or build it anew</source>
        <translation>le plugin a été compilé pour la version %1 de l&apos;interface des plugins, or ce programme a la version %2&#x202f;; prenez le plugin qui va avec ce programme ou recompilez-le</translation>
    </message>
</context>
<context>
    <name>plugin::ddl_export</name>
    <message>
        <source>Export to DDL SQL script file</source>
        <translation>Exporter vers un fichier de script SQL DDL</translation>
    </message>
    <message>
        <source>This plugin exports current opened project to a DDL SQL script file.</source>
        <translation>Ce plugin exporte le projet ouvert vers un fichier de script SQL DDL.</translation>
    </message>
    <message>
        <source>
  !!! Note : this plugin loads automatically previous parameters values before starting the export process, but you can use following parameters to override them !!!</source>
        <translation>
 &#x202f;!!! Remarque&#xa0;: ce plugin charge automatiquement les valeurs précédentes des paramètres avant de démarrer l&apos;export, mais vous pouvez les remplacer par les paramètres suivants&#x202f;!!!</translation>
    </message>
    <message>
        <source>
  --KorvGenericDDLExport_path=&quot;&lt;Export Path&gt;&quot; : [Optional] DDL export path parameter</source>
        <translation>
  --KorvGenericDDLExport_path=&quot;&lt;Chemin d&apos;export&gt;&quot;&#xa0;: [Optionnel] Chemin d&apos;export des scripts DDL</translation>
    </message>
    <message>
        <source>
  --KorvGenericDDLExport_db_type=&lt;numeric value&gt; : [Optional] Database type (%1)</source>
        <translation>
  --KorvGenericDDLExport_db_type=&lt;valeur numérique&gt;&#xa0;: [Optionnel] Type de base de données (%1)</translation>
    </message>
    <message>
        <source>
  --KorvGenericDDLExport_relation_as_fk=0/1 : [Optional] Export relationships as foreign keys in database</source>
        <translation>
  --KorvGenericDDLExport_relation_as_fk=0/1&#xa0;: [Optionnel] Exporter les relations comme clés étrangères de la base de données</translation>
    </message>
    <message>
        <source>
  --KorvGenericDDLExport_schema_type=&lt;numeric value&gt; : [Optional] Way to export database schema (0=full, 1=evolution, 2=full_and_evolution)</source>
        <translation>
  --KorvGenericDDLExport_schema_type=&lt;valeur numérique&gt;&#xa0;: [Optionnel] Façon d&apos;exporter le schéma de la base de données (0=full, 1=evolution, 2=full_and_evolution)</translation>
    </message>
    <message>
        <source>
  --KorvGenericDDLExport_custom_javacript=&quot;&lt;Custom JS&gt;&quot; : [Optional] Custom script (javascript file) to change the default behaviour of the export process</source>
        <translation>
  --KorvGenericDDLExport_custom_javacript=&quot;&lt;JS personnalisé&gt;&quot;&#xa0;: [Optionnel] Script personnalisé (fichier JavaScript) pour modifier le comportement par défaut de l&apos;export</translation>
    </message>
    <message>
        <source>Error loading plugin settings : </source>
        <translation>Erreur lors du chargement des paramètres du plugin&#xa0;: </translation>
    </message>
    <message>
        <source>Cannot export project to DDL file : project name is empty</source>
        <translation>Impossible d&apos;exporter le projet vers un fichier DDL&#xa0;: le nom du projet est vide</translation>
    </message>
    <message>
        <source>Cannot create a builder to generate DDL SQL script</source>
        <translation>Impossible de créer un générateur de script SQL DDL</translation>
    </message>
    <message>
        <source>Export directory &apos;%1&apos; doesn&apos;t exist.
Do you want to create it and start the export process ?</source>
        <translation>Le dossier d&apos;export «&#xa0;%1&#xa0;» n&apos;existe pas.
Voulez-vous le créer et démarrer l&apos;export&#x202f;?</translation>
    </message>
    <message>
        <source>Export path to create DDL SQL script doesn&apos;t exist : &apos;%1&apos;</source>
        <translation>Le chemin d&apos;export pour créer le script SQL DDL n&apos;existe pas&#xa0;: «&#xa0;%1&#xa0;»</translation>
    </message>
    <message>
        <source>Export directory &apos;%1&apos; cannot be created (%2)</source>
        <translation>Le dossier d&apos;export «&#xa0;%1&#xa0;» ne peut pas être créé (%2)</translation>
    </message>
    <message>
        <source>Nothing was written: evolution scripts need a tagged version</source>
        <translation>Rien n&apos;a été écrit&#xa0;: les scripts d&apos;évolution demandent une version étiquetée</translation>
    </message>
    <message>
        <source>Nothing was written: the setting for the schema has no such value</source>
        <translation>Rien n&apos;a été écrit&#xa0;: le paramètre du schéma n&apos;a pas cette valeur</translation>
    </message>
    <message>
        <source>no value, so the stored setting counts</source>
        <translation>aucune valeur, donc le paramètre enregistré s&apos;applique</translation>
    </message>
    <message>
        <source>none of them, so nothing is written</source>
        <translation>aucune d&apos;elles, donc rien n&apos;est écrit</translation>
    </message>
    <message>
        <source>Folder of the scripts</source>
        <translation>Dossier des scripts</translation>
    </message>
    <message>
        <source>Database that the scripts are for</source>
        <translation>Base de données à laquelle les scripts sont destinés</translation>
    </message>
    <message>
        <source>Whether relationships become foreign keys</source>
        <translation>Si les relations deviennent des clés étrangères</translation>
    </message>
    <message>
        <source>Which scripts are written</source>
        <translation>Quels scripts sont écrits</translation>
    </message>
    <message>
        <source>JavaScript file that may change each statement</source>
        <translation>Fichier JavaScript qui peut changer chaque instruction</translation>
    </message>
    <message>
        <source>The export has no option &apos;%1&apos;: it has %2</source>
        <translation>L&apos;export n&apos;a pas d&apos;option «&#xa0;%1&#xa0;»&#xa0;: il a %2</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not a value of the option &apos;%2&apos;: it takes %3</source>
        <translation>«&#xa0;%1&#xa0;» n&apos;est pas une valeur de l&apos;option «&#xa0;%2&#xa0;»&#xa0;: elle accepte %3</translation>
    </message>
    <message>
        <source>The settings cannot be stored: the project has no file</source>
        <translation>Les paramètres ne peuvent pas être enregistrés&#xa0;: le projet n&apos;a pas de fichier</translation>
    </message>
    <message>
        <source>The settings cannot be stored: %1</source>
        <translation>Les paramètres ne peuvent pas être enregistrés&#xa0;: %1</translation>
    </message>
    <message>
        <source>The statements are not known: the custom script &apos;%1&apos; was not allowed to run</source>
        <translation>Les instructions ne sont pas connues&#xa0;: le script personnalisé «&#xa0;%1&#xa0;» n&apos;a pas été autorisé à s&apos;exécuter</translation>
    </message>
    <message>
        <source>The export was cancelled; no script is complete</source>
        <translation>L&apos;export a été annulé&#x202f;; aucun script n&apos;est complet</translation>
    </message>
</context>
<context>
    <name>plugin::ddl_export_builder</name>
    <message>
        <source>Directory to create DDL SQL script doesn&apos;t exist : %1</source>
        <translation>Le dossier où créer le script SQL DDL n&apos;existe pas&#xa0;: %1</translation>
    </message>
    <message>
        <source>There is no plugin associated to the DDL builder class</source>
        <translation>Aucun plugin n&apos;est associé à la classe du générateur DDL</translation>
    </message>
    <message>
        <source>%1 : DDL export begin (%2)</source>
        <translation>%1&#xa0;: début de l&apos;export DDL (%2)</translation>
    </message>
    <message>
        <source>%1 : DDL export end (%2)</source>
        <translation>%1&#xa0;: fin de l&apos;export DDL (%2)</translation>
    </message>
    <message>
        <source>%1 DDL SQL script created for project &apos;%2&apos; : &apos;%3&apos;</source>
        <translation>%1&#xa0;: script SQL DDL créé pour le projet «&#xa0;%2&#xa0;»&#xa0;: «&#xa0;%3&#xa0;»</translation>
    </message>
    <message>
        <source>%1 : create table DDL SQL script for entity &apos;%2&apos; (%3)</source>
        <translation>%1&#xa0;: script SQL DDL de création de la table de l&apos;entité «&#xa0;%2&#xa0;» (%3)</translation>
    </message>
    <message>
        <source>%1 : create index DDL SQL script for property &apos;%2&apos; (%3)</source>
        <translation>%1&#xa0;: script SQL DDL de création de l&apos;index de la propriété «&#xa0;%2&#xa0;» (%3)</translation>
    </message>
    <message>
        <source>%1 : create extra-table DDL SQL script for relationship n-n &apos;%2&apos; (%3)</source>
        <translation>%1&#xa0;: script SQL DDL de création de la table de liaison de la relation n-m «&#xa0;%2&#xa0;» (%3)</translation>
    </message>
    <message>
        <source>%1 : add foreign key DDL SQL script for entity &apos;%2&apos; : property &apos;%3&apos;, target entity &apos;%4&apos; (%5)</source>
        <translation>%1&#xa0;: script SQL DDL d&apos;ajout de la clé étrangère de l&apos;entité «&#xa0;%2&#xa0;»&#xa0;: propriété «&#xa0;%3&#xa0;», entité cible «&#xa0;%4&#xa0;» (%5)</translation>
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
        <translation>%1&#xa0;: script SQL DDL de suppression de la table de l&apos;entité «&#xa0;%2&#xa0;» (%3)</translation>
    </message>
    <message>
        <source>%1 : rename table DDL SQL script for entity &apos;%2&apos; (%3)</source>
        <translation>%1&#xa0;: script SQL DDL de renommage de la table de l&apos;entité «&#xa0;%2&#xa0;» (%3)</translation>
    </message>
    <message>
        <source>%1 : drop column DDL SQL script for property &apos;%2&apos; (%3)</source>
        <translation>%1&#xa0;: script SQL DDL de suppression de la colonne de la propriété «&#xa0;%2&#xa0;» (%3)</translation>
    </message>
    <message>
        <source>%1 : drop index DDL SQL script for property &apos;%2&apos; (%3)</source>
        <translation>%1&#xa0;: script SQL DDL de suppression de l&apos;index de la propriété «&#xa0;%2&#xa0;» (%3)</translation>
    </message>
    <message>
        <source>%1 : add column DDL SQL script for property &apos;%2&apos; (%3)</source>
        <translation>%1&#xa0;: script SQL DDL d&apos;ajout de la colonne de la propriété «&#xa0;%2&#xa0;» (%3)</translation>
    </message>
    <message>
        <source>%1 : rename column DDL SQL script for property &apos;%2&apos; (%3)</source>
        <translation>%1&#xa0;: script SQL DDL de renommage de la colonne de la propriété «&#xa0;%2&#xa0;» (%3)</translation>
    </message>
    <message>
        <source>%1 : drop foreign key DDL SQL script for relationship &apos;%2&apos; (%3)</source>
        <translation>%1&#xa0;: script SQL DDL de suppression de la clé étrangère de la relation «&#xa0;%2&#xa0;» (%3)</translation>
    </message>
    <message>
        <source>Error loading all project historics :
%1</source>
        <translation>Erreur lors du chargement de l&apos;historique du projet&#xa0;:
%1</translation>
    </message>
    <message>
        <source>Cannot get temp directory to extract tag project state</source>
        <translation>Impossible d&apos;obtenir un dossier temporaire pour extraire la version étiquetée du projet</translation>
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
        <translation>Une erreur est survenue à l&apos;ouverture du fichier SQL&#xa0;: %1</translation>
    </message>
    <message>
        <source>An error occurred writing SQL file : %1</source>
        <translation>Une erreur est survenue à l&apos;écriture du fichier SQL&#xa0;: %1</translation>
    </message>
    <message>
        <source>it is a symbolic link that leads nowhere; remove it</source>
        <translation>c&apos;est un lien symbolique qui ne mène nulle part&#x202f;; supprimez-le</translation>
    </message>
    <message>
        <source>it is a symbolic link that leads out of the export folder, to %1; remove it</source>
        <translation>c&apos;est un lien symbolique qui mène hors du dossier d&apos;export, vers %1&#x202f;; supprimez-le</translation>
    </message>
    <message>
        <source>it exists, but is not a file</source>
        <translation>ce nom existe, mais ce n&apos;est pas un fichier</translation>
    </message>
    <message>
        <source>The SQL file is incomplete : %1</source>
        <translation>Le fichier SQL est incomplet&#xa0;: %1</translation>
    </message>
    <message>
        <source>Cannot uncompress project file : %1</source>
        <translation>Impossible de décompresser le fichier de projet&#xa0;: %1</translation>
    </message>
    <message>
        <source>An error occurred opening project file : %1</source>
        <translation>Une erreur est survenue à l&apos;ouverture du fichier de projet&#xa0;: %1</translation>
    </message>
    <message>
        <source>An error occurred loading project tag &apos;%1&apos; :
%2</source>
        <translation>Une erreur est survenue lors du chargement de la version étiquetée «&#xa0;%1&#xa0;» du projet&#xa0;:
%2</translation>
    </message>
    <message>
        <source>The export was cancelled</source>
        <translation>L&apos;export a été annulé</translation>
    </message>
</context>
<context>
    <name>storage</name>
    <message>
        <source>cannot be tagged: its state of %1 bytes is larger than the %2 bytes that a version may have</source>
        <translation>ne peut pas être étiqueté&#xa0;: son état de %1 octets dépasse les %2 octets qu&apos;une version peut avoir</translation>
    </message>
    <message>
        <source>is damaged (the time of a version is not a time, and a new version would come before it); restore it from a copy</source>
        <translation>est endommagé (la date d&apos;une version n&apos;en est pas une, et une nouvelle version passerait avant elle)&#x202f;; restaurez-le à partir d&apos;une copie</translation>
    </message>
    <message>
        <source>cannot be tagged: there is not enough memory</source>
        <translation>ne peut pas être étiqueté&#xa0;: la mémoire est insuffisante</translation>
    </message>
    <message>
        <source>field &apos;name&apos; must not be empty</source>
        <translation>le champ «&#xa0;name&#xa0;» ne doit pas être vide</translation>
    </message>
    <message>
        <source>project name</source>
        <translation>le nom du projet</translation>
    </message>
    <message>
        <source>only one property of an entity can be the identifier; for a composite key give that one several columns, such as &quot;columnName&quot;: &quot;a|b&quot;</source>
        <translation>une seule propriété d&apos;une entité peut être l&apos;identifiant&#x202f;; pour une clé composée, donnez-lui plusieurs colonnes, par exemple &quot;columnName&quot;: &quot;a|b&quot;</translation>
    </message>
    <message>
        <source>field &apos;autoIncrement&apos; works only with integer types such as &quot;long&quot;</source>
        <translation>le champ «&#xa0;autoIncrement&#xa0;» n&apos;est possible qu&apos;avec des types entiers comme &quot;long&quot;</translation>
    </message>
    <message>
        <source>relationship target %1 does not exist</source>
        <translation>la cible %1 de la relation n&apos;existe pas</translation>
    </message>
    <message>
        <source>relationship inverse %1 does not exist in the target %2</source>
        <translation>l&apos;inverse %1 de la relation n&apos;existe pas dans la cible %2</translation>
    </message>
    <message>
        <source>identifiers refer to each other in a circle: %1; give one of them a plain type</source>
        <translation>les identifiants se réfèrent les uns aux autres en boucle&#xa0;: %1&#x202f;; donnez à l&apos;un d&apos;eux un type simple</translation>
    </message>
    <message>
        <source>must not be empty</source>
        <translation>ne doit pas être vide</translation>
    </message>
    <message>
        <source>is longer than %1 bytes</source>
        <translation>dépasse %1 octets</translation>
    </message>
    <message>
        <source>%1 must not begin with &apos;:&apos; or &apos;.&apos;</source>
        <translation>%1 ne doit pas commencer par «&#xa0;:&#xa0;» ou «&#xa0;.&#xa0;»</translation>
    </message>
    <message>
        <source>%1 must not contain &apos;/&apos;, &apos;\&apos; or control characters</source>
        <translation>%1 ne doit contenir ni «&#xa0;/&#xa0;», ni «&#xa0;\&#xa0;», ni caractère de contrôle</translation>
    </message>
    <message>
        <source>%1 must not contain characters that turn the direction of text or separate lines</source>
        <translation>%1 ne doit contenir aucun caractère qui change le sens d&apos;écriture ou qui sépare des lignes</translation>
    </message>
    <message>
        <source>%1 is a reserved device name of Windows</source>
        <translation>%1 est un nom de périphérique réservé de Windows</translation>
    </message>
    <message>
        <source>enumeration id %1 is used twice</source>
        <translation>l&apos;id %1 sert à deux énumérations</translation>
    </message>
    <message>
        <source>entity id %1 is used twice</source>
        <translation>l&apos;id %1 sert à deux entités</translation>
    </message>
    <message>
        <source>property id %1 is used twice</source>
        <translation>l&apos;id %1 sert à deux propriétés</translation>
    </message>
    <message>
        <source>relationship id %1 is used twice</source>
        <translation>l&apos;id %1 sert à deux relations</translation>
    </message>
    <message>
        <source>type id %1 is used twice</source>
        <translation>l&apos;id %1 sert à deux types</translation>
    </message>
    <message>
        <source>a many-to-many needs relationship field %1, or the scripts make no usable link table or foreign key</source>
        <translation>une relation n-m a besoin du champ de relation %1, sinon les scripts ne créent pas de table de liaison ou de clé étrangère utilisable</translation>
    </message>
    <message>
        <source>&apos;type&apos; lists %1 types, but &apos;columnName&apos; gives the number of columns as %2; they must be as many</source>
        <translation>«&#xa0;type&#xa0;» énumère %1 types, mais «&#xa0;columnName&#xa0;» donne le nombre de colonnes %2&#x202f;; il en faut autant</translation>
    </message>
    <message>
        <source>the foreign key needs a column %1, which no property makes; name an existing one in &apos;columnName&apos;</source>
        <translation>la clé étrangère a besoin d&apos;une colonne %1, qu&apos;aucune propriété ne crée&#x202f;; indiquez dans «&#xa0;columnName&#xa0;» une colonne existante</translation>
    </message>
    <message>
        <source>its table %1 is the table of %2 as well; give one of them another &apos;tableName&apos;</source>
        <translation>sa table %1 est aussi celle de %2&#x202f;; donnez à l&apos;une des deux un autre «&#xa0;tableName&#xa0;»</translation>
    </message>
    <message>
        <source>%1 has the same name; give one of them another, since an entity without &apos;id&apos; is known by its name</source>
        <translation>%1 porte le même nom&#x202f;; donnez-en un autre à l&apos;une des deux, car une entité sans «&#xa0;id&#xa0;» est reconnue à son nom</translation>
    </message>
    <message>
        <source>cannot be created (%1); check its folder</source>
        <translation>ne peut pas être créé (%1)&#x202f;; vérifiez son dossier</translation>
    </message>
    <message>
        <source>no temporary file can be made there (%1)</source>
        <translation>aucun fichier temporaire ne peut y être créé (%1)</translation>
    </message>
    <message>
        <source>cannot be read back (%1)</source>
        <translation>ne peut pas être relu (%1)</translation>
    </message>
    <message>
        <source>column %1 is not a number of the expected range</source>
        <translation>la colonne %1 n&apos;est pas un nombre dans l&apos;intervalle attendu</translation>
    </message>
    <message>
        <source>column %1 is not a text</source>
        <translation>la colonne %1 n&apos;est pas un texte</translation>
    </message>
    <message>
        <source>is damaged (table %1, row %2: %3); restore it from a copy</source>
        <translation>est endommagé (table %1, ligne %2&#xa0;: %3)&#x202f;; restaurez-le à partir d&apos;une copie</translation>
    </message>
    <message>
        <source>is damaged (details of a property that does not exist); restore it from a copy</source>
        <translation>est endommagé (détails d&apos;une propriété qui n&apos;existe pas)&#x202f;; restaurez-le à partir d&apos;une copie</translation>
    </message>
    <message>
        <source>is damaged (table t_project has %1 rows); restore it from a copy</source>
        <translation>est endommagé (nombre de lignes de la table t_project&#xa0;: %1)&#x202f;; restaurez-le à partir d&apos;une copie</translation>
    </message>
    <message>
        <source>enumeration %1 does not exist</source>
        <translation>l&apos;énumération %1 n&apos;existe pas</translation>
    </message>
    <message>
        <source>the value is not of its type</source>
        <translation>la valeur n&apos;est pas de son type</translation>
    </message>
    <message>
        <source>the entity does not exist</source>
        <translation>l&apos;entité n&apos;existe pas</translation>
    </message>
    <message>
        <source>the key is used twice</source>
        <translation>la clé est utilisée deux fois</translation>
    </message>
    <message>
        <source>the type is neither a C++ type nor an enumeration</source>
        <translation>le type n&apos;est ni un type C++ ni une énumération</translation>
    </message>
    <message>
        <source>the property has a second relationship</source>
        <translation>la propriété a une seconde relation</translation>
    </message>
    <message>
        <source>entity %1 does not exist</source>
        <translation>l&apos;entité %1 n&apos;existe pas</translation>
    </message>
    <message>
        <source>type %1 does not exist or is one too many</source>
        <translation>le type %1 n&apos;existe pas ou est de trop</translation>
    </message>
    <message>
        <source>the details of the property are missing</source>
        <translation>les détails de la propriété manquent</translation>
    </message>
    <message>
        <source>is a SQLite database, but not a Korvane project</source>
        <translation>est une base de données SQLite, mais pas un projet Korvane</translation>
    </message>
    <message>
        <source>was written by a newer korvane (format %1; this one reads up to %2); update korvane</source>
        <translation>a été écrit par une version plus récente de korvane (format %1&#x202f;; celle-ci lit jusqu&apos;à %2)&#x202f;; mettez korvane à jour</translation>
    </message>
    <message>
        <source>is damaged (format %1); restore it from a copy</source>
        <translation>est endommagé (format %1)&#x202f;; restaurez-le à partir d&apos;une copie</translation>
    </message>
    <message>
        <source>is damaged (table %1 is not as it was created); restore it from a copy</source>
        <translation>est endommagé (la table %1 n&apos;est pas telle qu&apos;elle a été créée)&#x202f;; restaurez-le à partir d&apos;une copie</translation>
    </message>
    <message>
        <source>is damaged (table %1 is missing); restore it from a copy</source>
        <translation>est endommagé (la table %1 manque)&#x202f;; restaurez-le à partir d&apos;une copie</translation>
    </message>
    <message>
        <source>is damaged (table %1: %2); restore it from a copy</source>
        <translation>est endommagé (table %1&#xa0;: %2)&#x202f;; restaurez-le à partir d&apos;une copie</translation>
    </message>
    <message>
        <source>the project must be an object</source>
        <translation>le projet doit être un objet</translation>
    </message>
    <message>
        <source>relationship must be an object</source>
        <translation>la relation doit être un objet</translation>
    </message>
    <message>
        <source>must be an object</source>
        <translation>doit être un objet</translation>
    </message>
    <message>
        <source>relationship field &apos;%1&apos;</source>
        <translation>le champ de relation «&#xa0;%1&#xa0;»</translation>
    </message>
    <message>
        <source>field &apos;%1&apos;</source>
        <translation>le champ «&#xa0;%1&#xa0;»</translation>
    </message>
    <message>
        <source>%1 is missing</source>
        <translation>%1 manque</translation>
    </message>
    <message>
        <source>%1 must be a string</source>
        <translation>%1 doit être une chaîne de caractères</translation>
    </message>
    <message>
        <source>%1 must not be empty</source>
        <translation>%1 ne doit pas être vide</translation>
    </message>
    <message>
        <source>%1 must be an integer from %2 to %3</source>
        <translation>%1 doit être un entier de %2 à %3</translation>
    </message>
    <message>
        <source>%1 must be true or false</source>
        <translation>%1 doit être true ou false</translation>
    </message>
    <message>
        <source>%1 must be an array</source>
        <translation>%1 doit être un tableau</translation>
    </message>
    <message>
        <source>unknown relationship field &apos;%1&apos;</source>
        <translation>champ de relation inconnu «&#xa0;%1&#xa0;»</translation>
    </message>
    <message>
        <source>unknown field &apos;%1&apos;</source>
        <translation>champ inconnu «&#xa0;%1&#xa0;»</translation>
    </message>
    <message>
        <source>%1 must be &quot;korvane-project&quot;</source>
        <translation>%1 doit être &quot;korvane-project&quot;</translation>
    </message>
    <message>
        <source>field &apos;formatVersion&apos;: the text was written for a newer korvane (format %1; this one reads %2); update korvane</source>
        <translation>le champ «&#xa0;formatVersion&#xa0;»&#xa0;: le texte a été écrit pour une version plus récente de korvane (format %1&#x202f;; celle-ci lit %2)&#x202f;; mettez korvane à jour</translation>
    </message>
    <message>
        <source>%1 must be %2</source>
        <translation>%1 doit être %2</translation>
    </message>
    <message>
        <source>%1 must be an object</source>
        <translation>%1 doit être un objet</translation>
    </message>
    <message>
        <source>field &apos;metaData&apos; &apos;%1&apos; must be a string, a number or a boolean</source>
        <translation>le champ «&#xa0;metaData&#xa0;»&#xa0;: «&#xa0;%1&#xa0;» doit être une chaîne de caractères, un nombre ou un booléen</translation>
    </message>
    <message>
        <source>fields &apos;type&apos; and &apos;enumeration&apos; exclude each other</source>
        <translation>les champs «&#xa0;type&#xa0;» et «&#xa0;enumeration&#xa0;» s&apos;excluent</translation>
    </message>
    <message>
        <source>field &apos;relationship&apos; excludes &apos;type&apos; and &apos;enumeration&apos;</source>
        <translation>le champ «&#xa0;relationship&#xa0;» exclut «&#xa0;type&#xa0;» et «&#xa0;enumeration&#xa0;»</translation>
    </message>
    <message>
        <source>%1 must be one-to-one, one-to-many, many-to-one or many-to-many</source>
        <translation>%1 doit être one-to-one, one-to-many, many-to-one ou many-to-many</translation>
    </message>
    <message>
        <source>the version cannot be raised any further</source>
        <translation>la version ne peut plus être augmentée</translation>
    </message>
    <message>
        <source>%1: changed, but its &quot;version&quot; is still %2, so no evolution script will contain the change; delete the &quot;version&quot; field or raise it</source>
        <translation>%1&#xa0;: modifié, mais &quot;version&quot; vaut toujours %2, donc aucun script d&apos;évolution ne contiendra la modification&#x202f;; supprimez le champ &quot;version&quot; ou augmentez-le</translation>
    </message>
    <message>
        <source>all enumeration ids are used up</source>
        <translation>tous les ids d&apos;énumération sont épuisés</translation>
    </message>
    <message>
        <source>all entity ids are used up</source>
        <translation>tous les ids d&apos;entité sont épuisés</translation>
    </message>
    <message>
        <source>all property ids are used up</source>
        <translation>tous les ids de propriété sont épuisés</translation>
    </message>
    <message>
        <source>all relationship ids are used up</source>
        <translation>tous les ids de relation sont épuisés</translation>
    </message>
    <message>
        <source>%1</source>
        <comment>the words of the JSON parser</comment>
        <translation>JSON non valide (%1)</translation>
    </message>
    <message>
        <source>is a project file, not a model in text form; &apos;korvane dump&apos; writes one</source>
        <translation>est un fichier de projet, pas un modèle sous forme de texte&#x202f;; «&#xa0;korvane dump&#xa0;» en écrit un</translation>
    </message>
    <message>
        <source>the text is in %1; save it in UTF-8</source>
        <translation>le texte est en %1&#x202f;; enregistrez-le en UTF-8</translation>
    </message>
    <message>
        <source>field &apos;%1&apos; is given twice</source>
        <translation>le champ «&#xa0;%1&#xa0;» est donné deux fois</translation>
    </message>
    <message>
        <source>is nested deeper than %1 levels</source>
        <translation>est imbriqué sur plus de %1 niveaux</translation>
    </message>
    <message>
        <source>contains a NUL byte, which JSON does not allow</source>
        <translation>contient un octet NUL, ce que JSON ne permet pas</translation>
    </message>
    <message>
        <source>line %1, column %2</source>
        <translation>ligne %1, colonne %2</translation>
    </message>
    <message>
        <source>has no versions; &apos;korvane tag&apos; makes one</source>
        <translation>n&apos;a pas de version&#x202f;; «&#xa0;korvane tag&#xa0;» en crée une</translation>
    </message>
    <message>
        <source>has no version %1; the newest one is version %2</source>
        <translation>n&apos;a pas de version %1&#x202f;; la plus récente est la version %2</translation>
    </message>
    <message>
        <source>is damaged (version %1: %2); restore it from a copy</source>
        <translation>est endommagé (version %1&#xa0;: %2)&#x202f;; restaurez-le à partir d&apos;une copie</translation>
    </message>
    <message>
        <source>it cannot be uncompressed</source>
        <translation>elle ne peut pas être décompressée</translation>
    </message>
    <message>
        <source>cannot be written, so version %1 of %2 cannot be restored; check the folder for temporary files</source>
        <translation>ne peut pas être écrit, la version %1 de %2 ne peut donc pas être restaurée&#x202f;; vérifiez le dossier des fichiers temporaires</translation>
    </message>
    <message>
        <source>version %1 is not the newest one any more; nothing was taken away</source>
        <translation>la version %1 n&apos;est plus la plus récente&#x202f;; rien n&apos;a été retiré</translation>
    </message>
    <message>
        <source>&apos;%1&apos;</source>
        <translation>«&#xa0;%1&#xa0;»</translation>
    </message>
</context>
<context>
    <name>tools</name>
    <message>
        <source>the custom script did not end within %1 ms and could not be stopped; the program was ended</source>
        <translation>le script personnalisé ne s&apos;est pas terminé en %1 ms et n&apos;a pas pu être arrêté&#x202f;; le programme a été terminé</translation>
    </message>
    <message>
        <source>the custom script used more than 1 GiB of memory and could not be stopped; the program was ended</source>
        <translation>le script personnalisé a utilisé plus de 1 Gio de mémoire et n&apos;a pas pu être arrêté&#x202f;; le programme a été terminé</translation>
    </message>
    <message>
        <source>The custom script cannot be reloaded while it is running</source>
        <translation>Le script personnalisé ne peut pas être rechargé pendant son exécution</translation>
    </message>
    <message>
        <source>No custom script file is given</source>
        <translation>Aucun fichier de script personnalisé n&apos;est indiqué</translation>
    </message>
    <message>
        <source>the custom script cannot be read: %1</source>
        <translation>le script personnalisé ne peut pas être lu&#xa0;: %1</translation>
    </message>
    <message>
        <source>the custom script defines no function exportStep(project, entity, property, enumeration, parameters)</source>
        <translation>le script personnalisé ne définit pas de fonction exportStep(project, entity, property, enumeration, parameters)</translation>
    </message>
    <message>
        <source>loading the custom script did not end within %1 ms</source>
        <translation>le chargement du script personnalisé ne s&apos;est pas terminé en %1 ms</translation>
    </message>
    <message>
        <source>loading the custom script used more than 1 GiB of memory</source>
        <translation>le chargement du script personnalisé a utilisé plus de 1 Gio de mémoire</translation>
    </message>
    <message>
        <source>The custom script is running already</source>
        <translation>Le script personnalisé est déjà en cours d&apos;exécution</translation>
    </message>
    <message>
        <source>exportStep did not end within %1 ms</source>
        <translation>exportStep ne s&apos;est pas terminé en %1 ms</translation>
    </message>
    <message>
        <source>exportStep used more than 1 GiB of memory</source>
        <translation>exportStep a utilisé plus de 1 Gio de mémoire</translation>
    </message>
    <message>
        <source>exportStep returned %1 for the action %2; expected a string, undefined or null</source>
        <translation>exportStep a renvoyé %1 pour l&apos;action %2&#x202f;; une chaîne de caractères, undefined ou null est attendu</translation>
    </message>
    <message>
        <source>The script debugger cannot be attached to a running script</source>
        <translation>Le débogueur de script ne peut pas être attaché à un script en cours d&apos;exécution</translation>
    </message>
    <message>
        <source>The script debugger needs a display, and the program has none</source>
        <translation>Le débogueur de script a besoin d&apos;un affichage, et le programme n&apos;en a pas</translation>
    </message>
    <message>
        <source>it did not end within %1 ms</source>
        <translation>l&apos;évaluation ne s&apos;est pas terminée en %1 ms</translation>
    </message>
    <message>
        <source>it used more than 1 GiB of memory</source>
        <translation>l&apos;évaluation a utilisé plus de 1 Gio de mémoire</translation>
    </message>
    <message>
        <source>the file does not exist</source>
        <translation>le fichier n&apos;existe pas</translation>
    </message>
    <message>
        <source>it is a folder, not a file</source>
        <translation>c&apos;est un dossier, pas un fichier</translation>
    </message>
    <message>
        <source>it is not a regular file</source>
        <translation>ce n&apos;est pas un fichier ordinaire</translation>
    </message>
    <message>
        <source>it is larger than %1 MiB</source>
        <translation>il dépasse %1 Mio</translation>
    </message>
    <message>
        <source>it is not UTF-8 text</source>
        <translation>ce n&apos;est pas du texte UTF-8</translation>
    </message>
    <message>
        <source>%1: &apos;%2&apos; is not a time limit; give a number of milliseconds from 1 to %3, or 0 for none</source>
        <translation>%1&#xa0;: «&#xa0;%2&#xa0;» n&apos;est pas une limite de temps&#x202f;; indiquez un nombre de millisecondes de 1 à %3, ou 0 pour aucune</translation>
    </message>
    <message>
        <source>exportStep returned %1 characters for the action %2; at most %3 are allowed</source>
        <translation>exportStep a renvoyé %1 caractères pour l&apos;action %2&#x202f;; au plus %3 sont permis</translation>
    </message>
    <message>
        <source>a boolean</source>
        <comment>exportStep returned …</comment>
        <translation>un booléen</translation>
    </message>
    <message>
        <source>a number</source>
        <comment>exportStep returned …</comment>
        <translation>un nombre</translation>
    </message>
    <message>
        <source>a function</source>
        <comment>exportStep returned …</comment>
        <translation>une fonction</translation>
    </message>
    <message>
        <source>an array</source>
        <comment>exportStep returned …</comment>
        <translation>un tableau</translation>
    </message>
    <message>
        <source>an object</source>
        <comment>exportStep returned …</comment>
        <translation>un objet</translation>
    </message>
    <message>
        <source>%1 cannot be loaded (%2); install it again</source>
        <translation>%1 ne peut pas être chargé (%2)&#x202f;; réinstallez-le</translation>
    </message>
    <message>
        <source>it is not a plugin</source>
        <translation>ce n&apos;est pas un plugin</translation>
    </message>
    <message>
        <source>it was built for another interface</source>
        <translation>il a été compilé pour une autre interface</translation>
    </message>
    <message>
        <source>%1 was built for Qt %2, but this is Qt %3; install the one for this Qt</source>
        <translation>%1 a été compilé pour Qt %2, mais ceci est Qt %3&#x202f;; installez celui de ce Qt</translation>
    </message>
    <message>
        <source>KorvaneLineDebugger was not found in %1; install it to stop at lines</source>
        <translation>KorvaneLineDebugger est introuvable dans %1&#x202f;; installez-le pour pouvoir arrêter aux lignes</translation>
    </message>
    <message>
        <source>No custom script is loaded</source>
        <translation>Aucun script personnalisé n&apos;est chargé</translation>
    </message>
</context>
<context>
    <name>tools::debugger_tables</name>
    <message>
        <source>Step</source>
        <translation>Étape</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Valeur</translation>
    </message>
    <message>
        <source>Function</source>
        <translation>Fonction</translation>
    </message>
    <message>
        <source>(without a name)</source>
        <translation>(sans nom)</translation>
    </message>
    <message>
        <source>Line</source>
        <translation>Ligne</translation>
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
        <source>&amp;Run to action…</source>
        <translation>&amp;Jusqu&apos;à l&apos;action…</translation>
    </message>
    <message>
        <source>Toggle &amp;breakpoint</source>
        <translation>&amp;Basculer le point d&apos;arrêt</translation>
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
        <source>What the step is about</source>
        <translation>Ce que concerne l&apos;étape</translation>
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
        <source>Variables</source>
        <translation>Variables</translation>
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
        <translation>Éva&amp;luer&#xa0;:</translation>
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
        <source>The script is running</source>
        <translation>Le script s&apos;exécute</translation>
    </message>
    <message>
        <source>Attached: the next export stops at its first step</source>
        <translation>Attaché&#xa0;: le prochain export s&apos;arrêtera à sa première étape</translation>
    </message>
    <message>
        <source>Attached: the next export stops at the breakpoints</source>
        <translation>Attaché&#xa0;: le prochain export s&apos;arrêtera aux points d&apos;arrêt</translation>
    </message>
    <message>
        <source>failed: %1</source>
        <translation>échec&#xa0;: %1</translation>
    </message>
    <message>
        <source>Go to the next line, entering functions</source>
        <translation>Aller à la ligne suivante, en entrant dans les fonctions</translation>
    </message>
    <message>
        <source>Set or remove a breakpoint on the current line (F9)</source>
        <translation>Placer ou retirer un point d&apos;arrêt sur la ligne courante (F9)</translation>
    </message>
    <message>
        <source>Script (this build cannot stop at lines, only at steps and actions)</source>
        <translation>Script (cette version ne peut pas s&apos;arrêter aux lignes, seulement aux étapes et aux actions)</translation>
    </message>
    <message>
        <source>Call stack</source>
        <translation>Pile d&apos;appels</translation>
    </message>
</context>
<context>
    <name>tools::script_step</name>
    <message>
        <source>none</source>
        <translation>aucune</translation>
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
        <translation>Impossible de déboguer le script personnalisé&#xa0;: le fichier «&#xa0;%1&#xa0;» n&apos;existe pas</translation>
    </message>
    <message>
        <source>A new debugger window has been attached to the DDL SQL export process (&apos;KorvGenericDDLExport&apos; plugin) :
</source>
        <translation>Une nouvelle fenêtre de débogage a été attachée à l&apos;export SQL DDL (plugin «&#xa0;KorvGenericDDLExport&#xa0;»)&#xa0;:
</translation>
    </message>
    <message>
        <source>  1- save your settings and close this settings window ;
</source>
        <translation>  1- enregistrez vos paramètres et fermez cette fenêtre&#x202f;;
</translation>
    </message>
    <message>
        <source>  2- execute the export process : you will be able to debug your custom javascript (putting a breakpoint for example).

</source>
        <translation>  2- lancez l&apos;export&#xa0;: vous pourrez déboguer votre script JavaScript (en posant un point d&apos;arrêt par exemple).

</translation>
    </message>
    <message>
        <source>Note : debugger process is automatically detached from the DDL SQL export process when closing the debugger window.</source>
        <translation>Remarque&#xa0;: le débogueur est automatiquement détaché de l&apos;export SQL DDL à la fermeture de sa fenêtre.</translation>
    </message>
    <message>
        <source>

Other note : another way to start the debugger is to press the SHIFT key on the keyboard when executing the export process.</source>
        <translation>

Autre remarque&#xa0;: le débogueur démarre également si vous maintenez la touche Maj du clavier enfoncée en lançant l&apos;export.</translation>
    </message>
    <message>
        <source>Directory doesn&apos;t exist : &apos;%1&apos;</source>
        <translation>Le dossier n&apos;existe pas&#xa0;: «&#xa0;%1&#xa0;»</translation>
    </message>
    <message>
        <source>Custom script file doesn&apos;t exist : &apos;%1&apos;</source>
        <translation>Le fichier de script personnalisé n&apos;existe pas&#xa0;: «&#xa0;%1&#xa0;»</translation>
    </message>
    <message>
        <source>Error saving plugin settings : </source>
        <translation>Erreur lors de l&apos;enregistrement des paramètres du plugin&#xa0;: </translation>
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
        <translation>Emplacement&#xa0;:</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;&lt;span style=&quot; font-weight:600; text-decoration: underline;&quot;&gt;Note :&lt;/span&gt; you can put in this field a relative path to your Korvane project file (&lt;span style=&quot; font-style:italic;&quot;&gt;*.korv&lt;/span&gt; file).&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;&lt;span style=&quot; font-weight:600; text-decoration: underline;&quot;&gt;Remarque&#xa0;:&lt;/span&gt; vous pouvez saisir dans ce champ un chemin relatif à votre fichier de projet Korvane (fichier &lt;span style=&quot; font-style:italic;&quot;&gt;*.korv&lt;/span&gt;).&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
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
        <translation>Type de base de données&#xa0;:</translation>
    </message>
    <message>
        <source>Database type</source>
        <translation>Type de base de données</translation>
    </message>
    <message>
        <source>Relationships :</source>
        <translation>Relations&#xa0;:</translation>
    </message>
    <message>
        <source>Export relationships as foreign keys in database</source>
        <translation>Exporter les relations comme clés étrangères de la base de données</translation>
    </message>
    <message>
        <source>Schema :</source>
        <translation>Schéma&#xa0;:</translation>
    </message>
    <message>
        <source>Build full database schema into 1 DDL SQL script</source>
        <translation>Générer le schéma complet de la base de données dans 1 script SQL DDL</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;&lt;span style=&quot; font-weight:600;&quot;&gt;Note :&lt;/span&gt; to tag the project and create a new project version, go to Korvane main menu : &amp;quot;Actions &amp;gt;&amp;gt; Tag project state&amp;quot;.&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;&lt;span style=&quot; font-weight:600;&quot;&gt;Remarque&#xa0;:&lt;/span&gt; pour étiqueter le projet et en créer une nouvelle version, utilisez le menu principal de Korvane&#xa0;: &amp;quot;Actions &amp;gt;&amp;gt; Étiqueter l&apos;état du projet&amp;quot;.&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Build database schema evolution : 1 DDL SQL script file per project version</source>
        <translation>Générer l&apos;évolution du schéma de la base&#xa0;: 1 fichier de script SQL DDL par version du projet</translation>
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
        <translation>Script personnalisé (fichier JavaScript) pour modifier le comportement par défaut de l&apos;export</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;&lt;span style=&quot; font-weight:600;&quot;&gt;Note :&lt;/span&gt; to change the default behaviour of the export process, you can write your own custom javascript file.&lt;br/&gt;There is a custom javascript example file in the &lt;span style=&quot; font-style:italic;&quot;&gt;./samples/&lt;/span&gt; directory of Korvane package (&lt;span style=&quot; font-style:italic;&quot;&gt;./samples/custom_script.js&lt;/span&gt;).&lt;br/&gt;You can open this example file to have more details about how to implement your own custom javascript file.&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;&lt;span style=&quot; font-weight:600;&quot;&gt;Remarque&#xa0;:&lt;/span&gt; pour modifier le comportement par défaut de l&apos;export, vous pouvez écrire votre propre fichier JavaScript.&lt;br/&gt;Un exemple se trouve dans le dossier &lt;span style=&quot; font-style:italic;&quot;&gt;./samples/&lt;/span&gt; de Korvane (&lt;span style=&quot; font-style:italic;&quot;&gt;./samples/custom_script.js&lt;/span&gt;).&lt;br/&gt;Ouvrez ce fichier d&apos;exemple pour savoir comment écrire votre propre fichier JavaScript.&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Custom script file :</source>
        <translation>Fichier de script personnalisé&#xa0;:</translation>
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
        <translation>Déboguer le fichier JavaScript personnalisé</translation>
    </message>
    <message>
        <source>Documentation - Manual - User guide</source>
        <translation>Documentation - Manuel - Guide de l&apos;utilisateur</translation>
    </message>
    <message>
        <source>Ok</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
</context>
<context>
    <name>zk</name>
    <message>
        <source>is in use by another process (waited %1 s for it); wait until that one has ended, or end it, and try again</source>
        <translation>est utilisé par un autre processus (attente de %1 s)&#x202f;; attendez qu&apos;il se termine, ou terminez-le, puis réessayez</translation>
    </message>
    <message>
        <source>cannot be read or written: there is not enough memory</source>
        <translation>ne peut pas être lu ou écrit&#xa0;: la mémoire est insuffisante</translation>
    </message>
    <message>
        <source>cannot be written (%1); check its permissions and those of its folder</source>
        <translation>ne peut pas être écrit (%1)&#x202f;; vérifiez ses droits et ceux de son dossier</translation>
    </message>
    <message>
        <source>cannot be read or written (%1); check the disk</source>
        <translation>ne peut pas être lu ou écrit (%1)&#x202f;; vérifiez le disque</translation>
    </message>
    <message>
        <source>is damaged (%1); restore it from a copy</source>
        <translation>est endommagé (%1)&#x202f;; restaurez-le à partir d&apos;une copie</translation>
    </message>
    <message>
        <source>cannot be written: the disk is full; make room and try again</source>
        <translation>ne peut pas être écrit&#xa0;: le disque est plein&#x202f;; libérez de la place et réessayez</translation>
    </message>
    <message>
        <source>cannot be opened (%1); check its permissions and those of its folder</source>
        <translation>ne peut pas être ouvert (%1)&#x202f;; vérifiez ses droits et ceux de son dossier</translation>
    </message>
    <message>
        <source>is not a Korvane project file (.korv)</source>
        <translation>n&apos;est pas un fichier de projet Korvane (.korv)</translation>
    </message>
    <message>
        <source>contains a view &apos;%1&apos;, which does not belong in a project file; remove it, or restore the file from a backup</source>
        <translation>contient une vue «&#xa0;%1&#xa0;», qui n&apos;a pas sa place dans un fichier de projet&#x202f;; supprimez-la, ou restaurez le fichier à partir d&apos;une sauvegarde</translation>
    </message>
    <message>
        <source>contains a trigger &apos;%1&apos;, which does not belong in a project file; remove it, or restore the file from a backup</source>
        <translation>contient un déclencheur «&#xa0;%1&#xa0;», qui n&apos;a pas sa place dans un fichier de projet&#x202f;; supprimez-le, ou restaurez le fichier à partir d&apos;une sauvegarde</translation>
    </message>
    <message>
        <source>cannot be opened (%1); check its permissions</source>
        <translation>ne peut pas être ouvert (%1)&#x202f;; vérifiez ses droits</translation>
    </message>
    <message>
        <source>cannot be read (%1); check the disk</source>
        <translation>ne peut pas être lu (%1)&#x202f;; vérifiez le disque</translation>
    </message>
    <message>
        <source>does not exist; check the name</source>
        <translation>n&apos;existe pas&#x202f;; vérifiez le nom</translation>
    </message>
    <message>
        <source>cannot be opened (%1); check the permissions of its folder</source>
        <translation>ne peut pas être ouvert (%1)&#x202f;; vérifiez les droits de son dossier</translation>
    </message>
    <message>
        <source>cannot be opened (%1); check the name</source>
        <translation>ne peut pas être ouvert (%1)&#x202f;; vérifiez le nom</translation>
    </message>
    <message>
        <source>is empty, not a Korvane project</source>
        <translation>est vide, ce n&apos;est pas un projet Korvane</translation>
    </message>
    <message>
        <source>is a model in text form, not a project; import it first (korvane import MODEL.json PROJECT.korv)</source>
        <translation>est un modèle sous forme de texte, pas un projet&#x202f;; importez-le d&apos;abord (korvane import MODEL.json PROJECT.korv)</translation>
    </message>
    <message>
        <source>is %1, where only a journal of the project may be; move it away and try again</source>
        <translation>est %1, là où seul un journal du projet peut se trouver&#x202f;; déplacez-le et réessayez</translation>
    </message>
    <message>
        <source>cannot be read (%1); check its permissions</source>
        <translation>ne peut pas être lu (%1)&#x202f;; vérifiez ses droits</translation>
    </message>
    <message>
        <source>cannot be read (%1)</source>
        <translation>ne peut pas être lu (%1)</translation>
    </message>
    <message>
        <source>cannot be looked at (%1)</source>
        <translation>ne peut pas être examiné (%1)</translation>
    </message>
    <message>
        <source>is a journal that names another file, which opening the project would delete; korvane makes no such journal. Remove it if you do not know where it comes from, and try again</source>
        <translation>est un journal qui désigne un autre fichier, que l&apos;ouverture du projet supprimerait&#x202f;; korvane ne crée pas de tel journal. Supprimez-le si vous ne savez pas d&apos;où il vient, puis réessayez</translation>
    </message>
    <message>
        <source>is the journal of another database, which the project would destroy; move it away and try again</source>
        <translation>est le journal d&apos;une autre base de données, que le projet détruirait&#x202f;; déplacez-le et réessayez</translation>
    </message>
    <message>
        <source>is a write-ahead log, which this project does not use but would take for its newest contents; move it away and try again</source>
        <translation>est un journal d&apos;écriture anticipée (WAL), que ce projet n&apos;utilise pas mais qu&apos;il prendrait pour son contenu le plus récent&#x202f;; déplacez-le et réessayez</translation>
    </message>
    <message>
        <source>no project file is named</source>
        <translation>aucun fichier de projet n&apos;est indiqué</translation>
    </message>
    <message>
        <source>is %1, not a project file</source>
        <translation>est %1, pas un fichier de projet</translation>
    </message>
    <message>
        <source>belongs to a database that is not there, and would be taken for a part of the new project; move it away and try again</source>
        <translation>appartient à une base de données absente, et serait pris pour une partie du nouveau projet&#x202f;; déplacez-le et réessayez</translation>
    </message>
    <message>
        <source>cannot be changed: its name of %1 bytes is too long, as the name of its journal is %2 bytes longer and the limit is %3; choose a shorter one</source>
        <translation>ne peut pas être modifié&#xa0;: son nom de %1 octets est trop long, car celui de son journal a %2 octets de plus et la limite est %3&#x202f;; choisissez-en un plus court</translation>
    </message>
    <message>
        <source>cannot be changed: its path of %1 bytes is too long, as the name of its journal is %2 bytes longer and the limit is %3; choose a shorter one</source>
        <translation>ne peut pas être modifié&#xa0;: son chemin de %1 octets est trop long, car le nom de son journal a %2 octets de plus et la limite est %3&#x202f;; choisissez-en un plus court</translation>
    </message>
    <message>
        <source>The database is not open</source>
        <translation>La base de données n&apos;est pas ouverte</translation>
    </message>
    <message>
        <source>cannot be opened: Qt&apos;s SQLite driver brings an SQLite of its own along; use a Qt whose driver is built with the system&apos;s one</source>
        <translation>ne peut pas être ouvert&#xa0;: le pilote SQLite de Qt apporte son propre SQLite&#x202f;; utilisez un Qt dont le pilote est construit avec celui du système</translation>
    </message>
</context>
</TS>
