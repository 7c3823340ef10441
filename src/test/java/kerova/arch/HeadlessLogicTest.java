package kerova.arch;

import static com.tngtech.archunit.lang.syntax.ArchRuleDefinition.noClasses;

import com.tngtech.archunit.core.domain.JavaClasses;
import com.tngtech.archunit.core.importer.ClassFileImporter;
import com.tngtech.archunit.core.importer.ImportOption;
import org.junit.jupiter.api.Test;

/** DESIGN "Layout": the logic stays headless; only kerova.ui.swing and kerova.cli touch Swing or AWT. */
class HeadlessLogicTest {
    @Test
    void onlyTheSwingViewAndTheCliUseSwingOrAwt() {
        JavaClasses classes = new ClassFileImporter()
                .withImportOption(ImportOption.Predefined.DO_NOT_INCLUDE_TESTS)
                .withImportOption(location -> !location.contains("/test-classes/"))
                .importPackages("kerova");
        noClasses().that().resideOutsideOfPackages("kerova.ui.swing..", "kerova.cli..")
                .should().dependOnClassesThat().resideInAnyPackage("javax.swing..", "java.awt..")
                .because("form logic reaches the screen only through the Ui port")
                .check(classes);
    }
}
