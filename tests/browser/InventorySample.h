// SPDX-License-Identifier: GPL-3.0-or-later
// Two machines with something in every table: awkward values, missing ones, and in front of them PC1's rows
// of the original configuration, whose first value is "old" or 99: they must not show in the current one.
// Texts tell table and position: "os7" is at 7 in OS.
#pragma once

#include "tests/support/Database.h"

constexpr const char* kInventorySample = R"(
INSERT INTO Net VALUES ('PC1','anna','20011102','08:15:00','net4','20011001','07:00:00',NULL,NULL,'2001',''),
    ('PC2',NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL);
INSERT INTO Personal VALUES ('PC2','p1','p2','p3','p4','p5','p6','p7','p8','p9','p10',NULL);
INSERT INTO PC VALUES
    ('PC1',0,'old',1,1,'old','old','old','1','old','1',0,0,1,1,1,1,1,1,'old','old',1,1,1,1,1),
    ('PC1',1,'pc2',2,1,'pc5','pc6','pc7','0','pc9','0.0',NULL,-1,1048576,0,2560,1536,3584,1,
     'pc19','pc20',1,22,23,24,25),
    ('PC2',1,NULL,NULL,NULL,NULL,NULL,NULL,'450','','451',0,NULL,0,0,0,0,0,0,NULL,NULL,NULL,NULL,NULL,NULL,NULL);
INSERT INTO DeviceData VALUES
    ('id4','PC1',0,'old','','old','','','','','',''),
    ('id1','PC1',1,'Ports','','Serial','20000314','io','irq','dma','mem','more'),
    ('id2','PC2',1,'Net','16 00 00 00 ','Card',NULL,NULL,NULL,NULL,NULL,NULL),
    ('id3','PC1',1,NULL,'00 00 00 00 ',NULL,'soon','','','','','');
INSERT INTO DeviceDisplay VALUES ('id4','old','old'),('id3',NULL,'dac'),('id1','8 MB',NULL);
INSERT INTO DeviceMotherBoard VALUES ('id4','old','','','','','',''), ('id1','b1','19990314','b3','b4','b5','b6','b7'),
    ('id3','second','x','','','','',''), ('id2',NULL,NULL,NULL,NULL,NULL,NULL,NULL);
INSERT INTO DeviceNetwork VALUES ('id4',0,'old','','','','','','',''), ('id2',0,'n2','n3','n4','n5','n6','n7','n8','n9'),
    ('id1',1,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL);
INSERT INTO Drives VALUES ('PC1',0,99,99,99,99,99,'old'), ('PC1',1,2,3,4,5,6,'ACD'), ('PC2',1,NULL,NULL,NULL,NULL,NULL,NULL);
INSERT INTO DrivesData VALUES ('PC1',0,'old','','',1,1,'','','',''),
    ('PC1',1,'C:','Fixed','FAT',1610612736,1,'lab','ser','map','user'),
    ('PC1',1,'A:',NULL,NULL,0,0,NULL,NULL,NULL,NULL), ('PC2',1,'D:','CD','',524288,1572864,'','','','');
INSERT INTO Input VALUES ('PC1',0,'old',9,9,9,'old',9,0,9), ('PC1',1,'in2',3,4,5,'in6',7,-1,9), ('PC2',1,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL);
INSERT INTO MSOffice VALUES ('PC1',0,'old','old','old','old','old'), ('PC1',1,'a|b','','ms4','|','ms6'), ('PC2',1,NULL,NULL,NULL,NULL,NULL);
INSERT INTO UninstallData VALUES ('PC1',0,'Microsoft Office 97|x','un3'), ('PC1',1,'Paint','paint.exe'),
    ('PC2',1,NULL,NULL), ('PC1',1,'New MS Office','');
INSERT INTO ODBCData VALUES ('PC1',0,'old','old','old'), ('PC1',1,'od2','od3','od4'), ('PC2',1,NULL,NULL,NULL), ('PC1',1,'od5','od6','od7');
INSERT INTO OS VALUES
    ('PC1',0,'old','old','old',-1,-1,'old','old','old','old','old','old','old','old','old','old','old'),
    ('PC1',1,'os2','os3','os4',0,NULL,'os7','os8','os9','os10','os11','os12','os13','os14','os15','os16','os17'),
    ('PC2',1,NULL,NULL,NULL,NULL,-1,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL);
INSERT INTO PrinterData VALUES ('PC1',0,'L','old','old','old'), ('PC1',1,'R','far','drv','lpt'), ('PC1',1,'L','near','drv','lpt'),
    ('PC2',1,'L',NULL,NULL,NULL);
)";
