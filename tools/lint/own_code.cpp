// SPDX-License-Identifier: Apache-2.0
// A plugin of clang-tidy: its checks look at our own declarations only. Without it they walk
// through those of every system header too, where no finding is shown, and that takes most of the
// time.

#include <clang/AST/ASTConsumer.h>
#include <clang/AST/ASTContext.h>
#include <clang/Basic/SourceManager.h>
#include <clang/Frontend/CompilerInstance.h>
#include <clang/Frontend/FrontendPluginRegistry.h>

#include <memory>
#include <string>
#include <vector>

namespace {

class OwnCode : public clang::ASTConsumer {
public:
    void HandleTranslationUnit(clang::ASTContext& context) override {
        const clang::SourceManager& sources = context.getSourceManager();
        std::vector<clang::Decl*> own;
        for (clang::Decl* declaration : context.getTranslationUnitDecl()->decls()) {
            const clang::SourceLocation place = declaration->getLocation();
            if (place.isValid() && !sources.isInSystemHeader(sources.getExpansionLoc(place))) {
                own.push_back(declaration);
            }
        }
        context.setTraversalScope(own);
    }
};

class BeforeTheChecks : public clang::PluginASTAction {
    std::unique_ptr<clang::ASTConsumer> CreateASTConsumer(clang::CompilerInstance& /*compiler*/,
                                                          llvm::StringRef /*file*/) override {
        return std::make_unique<OwnCode>();
    }
    bool ParseArgs(const clang::CompilerInstance& /*compiler*/,
                   const std::vector<std::string>& /*arguments*/) override {
        return true;
    }
    ActionType getActionType() override {
        return AddBeforeMainAction;
    }
};

const clang::FrontendPluginRegistry::Add<BeforeTheChecks> registered("own-code",
                                                                     "looks at our own code only");

} // namespace
