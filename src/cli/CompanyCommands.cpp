// company new|list|delete|backup|compact|import-file|checkout|checkin

#include "cli/Cli.h"
#include "rulebase/CompanyNames.h"
#include "rulebase/CompanyFiles.h"
#include "rulebase/Maintenance.h"
#include "office/CompanyTransfer.h"

#include <optional>

namespace normaris::cli {

void addCompanyCommands(QList<Command> &commands)
{
    const QString company = QStringLiteral("company");
    commands << Command{{company, QStringLiteral("new")},
                        {optional(QStringLiteral("--from"), QStringLiteral("SOURCE"))},
                        QStringLiteral("NAME"),
                        1,
                        1,
                        [](Context &c) {
                            CompanyFiles files(c.layout, c.prompt);
                            const QString name = c.args.words[0];
                            return exitCodeOf(c.args.has(QStringLiteral("--from"))
                                                  ? files.createFromCompany(name, c.args.option(QStringLiteral("--from")))
                                                  : files.createFromSeed(name));
                        }};
    commands << Command{{company, QStringLiteral("list")}, {}, QString(), 0, 0, [](Context &c) {
                            for (const QString &name : companiesOf(c.layout))
                                c.out << name << '\n';
                            return int(ExitDone);
                        }};
    commands << Command{{company, QStringLiteral("delete")}, {}, QStringLiteral("NAME"), 1, 1, [](Context &c) {
                            return exitCodeOf(CompanyFiles(c.layout, c.prompt).remove(c.args.words[0]));
                        }};
    commands << Command{{company, QStringLiteral("backup")},
                        {optional(QStringLiteral("--to"), QStringLiteral("DIR"))},
                        QStringLiteral("NAME"),
                        1,
                        1,
                        [](Context &c) {
                            std::optional<QString> to;
                            if (c.args.has(QStringLiteral("--to")))
                                to = c.args.option(QStringLiteral("--to"));
                            return exitCodeOf(Maintenance(c.layout, c.prompt).backup(c.args.words[0], to));
                        }};
    commands << Command{{company, QStringLiteral("compact")}, {}, QStringLiteral("NAME"), 1, 1, [](Context &c) {
                            return exitCodeOf(Maintenance(c.layout, c.prompt).optimise(c.args.words[0]));
                        }};
    commands << Command{{company, QStringLiteral("import-file")},
                        {optional(QStringLiteral("--name"), QStringLiteral("NAME"))},
                        QStringLiteral("FILE"),
                        1,
                        1,
                        [](Context &c) {
                            return exitCodeOf(
                                CompanyTransfer(c.layout, c.prompt).importFile(c.args.words[0], c.args.option(QStringLiteral("--name"))));
                        }};
    commands << Command{{company, QStringLiteral("checkout")},
                        {required(QStringLiteral("--to"), QStringLiteral("FILE"))},
                        QStringLiteral("NAME"),
                        1,
                        1,
                        [](Context &c) {
                            return exitCodeOf(
                                CompanyTransfer(c.layout, c.prompt).checkout(c.args.words[0], c.args.option(QStringLiteral("--to"))));
                        }};
    commands << Command{{company, QStringLiteral("checkin")}, {}, QStringLiteral("NAME FILE"), 2, 2, [](Context &c) {
                            return exitCodeOf(CompanyTransfer(c.layout, c.prompt).checkin(c.args.words[0], c.args.words[1]));
                        }};
}

} // namespace normaris::cli
